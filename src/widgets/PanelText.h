// One line of text: never higher or lower than its font says, and its left edge on a whole panel pixel, so that pixel
// faces stay sharp wherever they are centred.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// Takes no clicks. A line that is too long is squeezed to 0.7 of its width, and then cut with an ellipsis.
class PanelText : public juce::Component {
 public:
  PanelText();

  void setText(const juce::String& newText);
  const juce::String& getText() const { return text; }
  void setFont(const juce::Font& newFont);
  void setColour(juce::Colour newColour);
  juce::Colour getColour() const { return colour; }
  /// Centred unless set.
  void setJustification(juce::Justification newJustification);

  void paint(juce::Graphics& graphics) override;
  void resized() override { layOut(); }
  std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

 private:
  void layOut();

  juce::String text;
  juce::Font font;
  juce::Colour colour = juce::Colours::black;
  juce::Justification justification = juce::Justification::centred;
  juce::GlyphArrangement glyphs;
};

}  // namespace tesh::bramel
