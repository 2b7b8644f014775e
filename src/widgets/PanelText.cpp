// A line of text on whole panel pixels.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/PanelText.h"

#include <algorithm>
#include <cmath>

namespace tesh::bramel {
namespace {

constexpr float kNarrowest = 0.7F;
constexpr juce::juce_wchar kLastLatin1 = 0xff;
/// Squares of the display typeface's grid in its height. Each glyph's blank column is one square wide.
constexpr float kSquaresOfHeight = 13.0F;

/// The nearest whole pixel. Halves are rounded to the right, also if a font's rounded widths miss them slightly.
float wholePixel(float x) {
  constexpr float kNoise = 0.01F;
  return std::floor(x + 0.5F + kNoise);
}

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

void PanelText::setFont(const juce::Font& newFont) { takeFont(newFont, false); }

void PanelText::setDisplayFont(const juce::Font& newFont) { takeFont(newFont, true); }

void PanelText::takeFont(const juce::Font& newFont, bool isDisplayFont) {
  if (newFont != font || isDisplayFont != displayFace) {
    font = newFont;
    displayFace = isDisplayFont;
    layOut();
  }
}

bool PanelText::usesDisplayFace() const {
  if (!displayFace) {
    return false;
  }
  for (auto letter = text.getCharPointer(); !letter.isEmpty();) {
    if (letter.getAndAdvance() > kLastLatin1) {
      return false;
    }
  }
  return true;
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
  if (text.isEmpty()) {
    return;
  }
  const bool isPixelText = usesDisplayFace();
  const juce::Font face = displayFace && !isPixelText ? juce::Font(font.getHeight()) : font;
  const auto width = static_cast<float>(getWidth());
  const float natural = face.getStringWidthFloat(text);
  if (natural <= 0.0F || width <= 0.0F) {
    return;
  }
  const float squeeze = std::clamp(width / natural, kNarrowest, 1.0F);
  // A text that fits exactly must not lose its end to rounding.
  constexpr float kSlack = 0.5F;
  glyphs.addCurtailedLineOfText(face.withHorizontalScale(face.getHorizontalScale() * squeeze), text, 0.0F, 0.0F,
                                width + kSlack, true);
  const float blank = isPixelText ? face.getHeight() / kSquaresOfHeight * squeeze : 0.0F;
  const auto place = justification.appliedToRectangle(
      juce::Rectangle<float>(std::min(natural * squeeze, width) - blank, face.getHeight()), getLocalBounds().toFloat());
  glyphs.moveRangeOfGlyphs(0, -1, wholePixel(place.getX()), place.getY() + face.getAscent());
}

std::unique_ptr<juce::AccessibilityHandler> PanelText::createAccessibilityHandler() {
  return std::make_unique<Handler>(*this);
}

}  // namespace tesh::bramel
