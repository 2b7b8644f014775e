// Words in pictures: the outlines of a face, set letter by letter with tracking.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace sivray::art {

/// Measures in panel pixels.
struct TextStyle {
  float em;               ///< Size of the em square.
  float tracking = 0.0F;  ///< Added between two letters.
};

class Lettering {
 public:
  /// Loads `resources/fonts/...` of the folder `fonts`. Throws std::runtime_error if a font is missing.
  explicit Lettering(const juce::File& fonts, const juce::File& displayFace);

  /// Outlines of capitals in the panel's print, beginning at 0 with the base line at 0.
  juce::Path print(const juce::String& text, TextStyle style) const;
  /// The same in the display face; `height` is ascent plus descent.
  juce::Path display(const juce::String& text, float height) const;

 private:
  juce::Typeface::Ptr printFace;
  juce::Typeface::Ptr displayFace;
};

/// Moved so that the middle of the ink lies at `x` and the base line at `y`.
juce::Path centredAt(juce::Path text, float x, float y);
/// Moved so that the ink begins at `x`.
juce::Path leftAt(juce::Path text, float x, float y);
/// Moved so that the ink ends at `x`.
juce::Path rightAt(juce::Path text, float x, float y);

}  // namespace sivray::art
