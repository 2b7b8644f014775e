// A canvas for one picture: shapes in panel pixels, drawn at the picture's scale.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cmath>
#include <vector>

#include "Lettering.h"

namespace sivray::art {

using Point = juce::Point<float>;
using Box = juce::Rectangle<float>;

/// A colour of a ramp and its position, 0 to 1; the first is at 0 and the last at 1.
struct Stop {
  float at;
  juce::Colour colour;
};
using Ramp = std::vector<Stop>;

/// `radius` is at most half of the shorter side.
juce::Path roundBox(Box box, float radius);
juce::Path disc(Point centre, float radius);
juce::Path polygon(std::initializer_list<Point> corners);

class Canvas {
 public:
  /// A transparent picture of `width` by `height` panel pixels, with `scale` device pixels to each.
  Canvas(int width, int height, int scale);

  void fill(const juce::Path& shape, juce::Colour colour);
  void fill(Box box, juce::Colour colour);
  /// The ramp runs from the shape's top to its bottom. Boxes on whole pixels have sharp edges; paths are antialiased.
  void fill(Box box, const Ramp& ramp);
  void fill(const juce::Path& shape, const Ramp& ramp);
  /// The ramp runs from `centre` outwards; its last colour also fills everything beyond `radius`.
  void fillRadial(const juce::Path& shape, const Ramp& ramp, Point centre, float radius);

  /// Prints a word that begins at `x`. Base line and letters are moved to whole device pixels, so that stems are sharp.
  void print(const Word& word, float x, float baseLine, juce::Colour colour);
  /// Prints a word centred at `x`, including the tracking before its first letter.
  void printCentred(const Word& word, float x, float baseLine, juce::Colour colour);

  /// A line of one pixel inside the edge of a rounded box.
  void innerLine(Box box, float radius, const Ramp& ramp);
  /// A shadow with the outline of `box`, whose edge fades over `softness` pixels, half of them outside.
  void shadow(Box box, float radius, float softness, juce::Colour colour);

  /// Calls `draw` with the canvas moved to `origin` and enlarged by `factor`.
  template <class Draw>
  void enlarged(Point origin, float factor, const Draw& draw) {
    const juce::Graphics::ScopedSaveState state(graphics);
    graphics.addTransform(juce::AffineTransform::scale(factor).translated(origin));
    draw(*this);
  }
  /// Calls `draw` with drawing clipped to `shape`.
  template <class Draw>
  void clipped(const juce::Path& shape, const Draw& draw) {
    const juce::Graphics::ScopedSaveState state(graphics);
    graphics.reduceClipRegion(shape);
    draw(*this);
  }

  /// Device pixels per panel pixel, without enlargement.
  int scale() const { return static_cast<int>(pixels); }
  const juce::Image& image() const { return picture; }

 private:
  float wholePixel(float at) const { return std::floor(at * pixels + 0.5F) / pixels; }

  float pixels;
  juce::Image picture;
  juce::Graphics graphics;
};

}  // namespace sivray::art
