// One line of text, with its font's exact height and its left edge on a whole panel pixel, so that pixel fonts stay
// sharp wherever they are centred.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// Ignores clicks. A line that is too long is compressed to 0.7 of its width, and then cut with an ellipsis.
class PanelText : public juce::Component {
 public:
  PanelText();

  void setText(const juce::String& newText);
  const juce::String& getText() const { return text; }
  void setFont(const juce::Font& newFont);
  /// A font of the display typeface. It holds Latin-1 only, so other texts are drawn in the default typeface. Each of
  /// its glyphs ends in a blank column, and the last of these is ignored when a line is centred.
  void setDisplayFont(const juce::Font& newFont);
  void setColour(juce::Colour newColour);
  /// Centred by default.
  void setJustification(juce::Justification newJustification);

  void paint(juce::Graphics& graphics) override;
  void resized() override { layOut(); }
  std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

 private:
  void layOut();
  void takeFont(const juce::Font& newFont, bool isDisplayFont);
  /// False if the display face lacks one of the text's characters.
  bool usesDisplayFace() const;

  juce::String text;
  juce::Font font;
  bool displayFace = false;
  juce::Colour colour = juce::Colours::black;
  juce::Justification justification = juce::Justification::centred;
  juce::GlyphArrangement glyphs;
};

}  // namespace tesh::bramel
