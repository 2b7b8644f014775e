// Loads the faces and sets words as outlines.
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

// Ascent plus descent of the panel's typeface relative to its em: JUCE's unit of height.
constexpr float kPrintHeight = (1193.0F + 289.0F) / 1000.0F;

Word setWord(juce::Typeface& face, const juce::String& text, float height, float tracking) {
  juce::Array<int> glyphs;
  juce::Array<float> positions;  // one more than glyphs: where the next would begin
  face.getGlyphPositions(text, glyphs, positions);
  Word word{{}, positions.getLast() * height + tracking * static_cast<float>(glyphs.size() - 1), tracking};
  for (int i = 0; i < glyphs.size(); ++i) {
    Letter letter{{}, positions[i] * height + tracking * static_cast<float>(i)};
    face.getOutlineForGlyph(glyphs[i], letter.path);
    letter.path.applyTransform(juce::AffineTransform::scale(height));
    word.letters.push_back(std::move(letter));
  }
  return word;
}

}  // namespace

Lettering::Lettering(const juce::File& fonts, const juce::File& displayFaceFile)
    : printFace(load(fonts.getChildFile("oswald/Oswald-Medium.ttf"))), displayFace(load(displayFaceFile)) {}

Word Lettering::print(const juce::String& text, TextStyle style) const {
  return setWord(*printFace, text, style.em * kPrintHeight, style.tracking);
}

Word Lettering::display(const juce::String& text, float height) const {
  return setWord(*displayFace, text, height, 0.0F);
}

}  // namespace sivray::art
