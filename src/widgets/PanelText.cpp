// One line of text on whole panel pixels.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/PanelText.h"

#include <algorithm>
#include <cmath>

namespace tesh::bramel {
namespace {

constexpr float kNarrowest = 0.7F;

class Handler : public juce::AccessibilityHandler {
 public:
  explicit Handler(PanelText& spokenText)
      : AccessibilityHandler(spokenText, juce::AccessibilityRole::staticText), panelText(spokenText) {}
  juce::String getTitle() const override { return panelText.getText(); }

 private:
  const PanelText& panelText;
};

}  // namespace

PanelText::PanelText() { setInterceptsMouseClicks(false, false); }

void PanelText::setText(const juce::String& newText) {
  if (newText != text) {
    text = newText;
    layOut();
  }
}

void PanelText::setFont(const juce::Font& newFont) {
  if (newFont != font) {
    font = newFont;
    layOut();
  }
}

void PanelText::setColour(juce::Colour newColour) {
  if (newColour != colour) {
    colour = newColour;
    repaint();
  }
}

void PanelText::setJustification(juce::Justification newJustification) {
  if (newJustification != justification) {
    justification = newJustification;
    layOut();
  }
}

void PanelText::paint(juce::Graphics& graphics) {
  graphics.setColour(colour);
  glyphs.draw(graphics);
}

void PanelText::layOut() {
  repaint();
  glyphs.clear();
  const auto width = static_cast<float>(getWidth());
  const float natural = font.getStringWidthFloat(text);
  if (natural <= 0.0F || width <= 0.0F) {
    return;
  }
  const float squeeze = std::clamp(width / natural, kNarrowest, 1.0F);
  // A text that just fits must not lose its end to rounding.
  constexpr float kSlack = 0.5F;
  glyphs.addCurtailedLineOfText(font.withHorizontalScale(font.getHorizontalScale() * squeeze), text, 0.0F, 0.0F,
                                width + kSlack, true);
  const auto place = justification.appliedToRectangle(
      juce::Rectangle<float>(std::min(natural * squeeze, width), font.getHeight()), getLocalBounds().toFloat());
  glyphs.moveRangeOfGlyphs(0, -1, std::round(place.getX()), place.getY() + font.getAscent());
}

std::unique_ptr<juce::AccessibilityHandler> PanelText::createAccessibilityHandler() {
  return std::make_unique<Handler>(*this);
}

}  // namespace tesh::bramel
