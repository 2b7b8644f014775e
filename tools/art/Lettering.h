// Words in pictures: the outlines of a typeface, set letter by letter with tracking.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <vector>

namespace sivray::art {

/// Measures in panel pixels.
struct TextStyle {
  float em;  ///< Size of the em square.
  /// Space before each letter, except the first letter of a word that begins at a given position.
  float tracking = 0.0F;
};

/// An outline with its origin at 0, 0, and its position in the word.
struct Letter {
  juce::Path path;
  float x;
};

struct Word {
  std::vector<Letter> letters;
  float width;  ///< Sum of the advances, with the tracking between letters.
  float tracking;
};

class Lettering {
 public:
  /// Throws std::runtime_error if the display face or a font in the folder `fonts` is missing.
  Lettering(const juce::File& fonts, const juce::File& displayFace);

  /// Capitals in the panel's print.
  Word print(const juce::String& text, TextStyle style) const;
  /// The display face; `height` is ascent plus descent.
  Word display(const juce::String& text, float height) const;

 private:
  juce::Typeface::Ptr printFace;
  juce::Typeface::Ptr displayFace;
};

}  // namespace sivray::art
