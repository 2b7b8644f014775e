// Faces for Japanese texts, and where their lines break.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// The face for Japanese texts: `windowsFace` on Windows, elsewhere the panel's default one with letters of an
/// installed font. Empty if the user's language is another one, or if no font has Japanese letters: the texts are then
/// English.
juce::String japaneseFace(const char* windowsFace);

/// `text` with line feeds, so that each line fits `width` in `font`. Japanese has no blanks between words, so that JUCE
/// finds no place to break it. A run of Latin letters stays whole, and no line begins with a closing mark.
juce::String inLines(const juce::String& text, const juce::Font& font, float width);

}  // namespace tesh::bramel
