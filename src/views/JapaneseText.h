// Typefaces and line breaks for Japanese texts.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// The typeface for Japanese texts: `windowsFace` on Windows, elsewhere the panel's default one with characters of an
/// installed font. Empty if the user's language is another one, or if no font has Japanese characters; texts are then
/// English.
juce::String japaneseFace(const char* windowsFace);

/// `text` with line feeds, so that each line fits `width` in `font`. Needed because JUCE breaks lines at spaces only,
/// which Japanese does not have. A run of Latin letters stays together, and no line begins with a closing mark.
juce::String inLines(const juce::String& text, const juce::Font& font, float width);

}  // namespace tesh::bramel
