// SPDX-License-Identifier: GPL-3.0-or-later
#include "Lettering.h"

#include <stdexcept>

namespace sivray::art {
namespace {

juce::Typeface::Ptr load(const juce::File& file) {
  juce::MemoryBlock bytes;
  if (!file.loadFileAsData(bytes)) {
    throw std::runtime_error("cannot read the font " + file.getFullPathName().toStdString());
  }
  return juce::Typeface::createSystemTypefaceFor(bytes.getData(), bytes.getSize());
}

// Ascent plus descent of the panel's print over its em square: JUCE's unit of height.
constexpr float kPrintHeight = (1193.0F + 289.0F) / 1000.0F;

juce::Path outlines(juce::Typeface& face, const juce::String& text, float height, float tracking) {
  juce::Array<int> glyphs;
  juce::Array<float> positions;
  face.getGlyphPositions(text, glyphs, positions);
  juce::Path whole;
  for (int i = 0; i < glyphs.size(); ++i) {
    juce::Path letter;
    face.getOutlineForGlyph(glyphs[i], letter);
    const float x = positions[i] * height + tracking * static_cast<float>(i);
    whole.addPath(letter, juce::AffineTransform::scale(height).translated(x, 0.0F));
  }
  return whole;
}

juce::Path moved(juce::Path text, float x, float y) {
  text.applyTransform(juce::AffineTransform::translation(x, y));
  return text;
}

}  // namespace

Lettering::Lettering(const juce::File& fonts, const juce::File& displayFaceFile)
    : printFace(load(fonts.getChildFile("oswald/Oswald-Medium.ttf"))), displayFace(load(displayFaceFile)) {}

juce::Path Lettering::print(const juce::String& text, TextStyle style) const {
  return outlines(*printFace, text, style.em * kPrintHeight, style.tracking);
}

juce::Path Lettering::display(const juce::String& text, float height) const {
  return outlines(*displayFace, text, height, 0.0F);
}

juce::Path centredAt(juce::Path text, float x, float y) {
  const float middle = text.getBounds().getCentreX();
  return moved(std::move(text), x - middle, y);
}

juce::Path leftAt(juce::Path text, float x, float y) {
  const float left = text.getBounds().getX();
  return moved(std::move(text), x - left, y);
}

juce::Path rightAt(juce::Path text, float x, float y) {
  const float right = text.getBounds().getRight();
  return moved(std::move(text), x - right, y);
}

}  // namespace sivray::art
