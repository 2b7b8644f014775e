// A picture under way: shapes in panel pixels, drawn at the picture's scale.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cmath>
#include <vector>

#include "Lettering.h"

namespace sivray::art {

using Point = juce::Point<float>;
using Box = juce::Rectangle<float>;

/// A colour of a ramp and its place on it, 0 to 1; the first is at 0 and the last at 1.
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
  /// The ramp runs from the shape's top to its bottom. Boxes on whole pixels have whole edges; paths are softened at
  /// theirs.
  void fill(Box box, const Ramp& ramp);
  void fill(const juce::Path& shape, const Ramp& ramp);
  /// The ramp runs from `centre` outwards; its last colour reaches beyond `radius`.
  void fillRadial(const juce::Path& shape, const Ramp& ramp, Point centre, float radius);

  /// A word that begins at `x`. Base line and letters move to whole device pixels, so that stems and feet are sharp.
  void print(const Word& word, float x, float baseLine, juce::Colour colour);
  /// A word with its middle at `x`. The tracking before its first letter counts.
  void printCentred(const Word& word, float x, float baseLine, juce::Colour colour);

  /// A line of one pixel inside the edge of a rounded box.
  void innerLine(Box box, float radius, const Ramp& ramp);
  /// A shadow with the outline of `box`, whose edge fades over `softness` pixels, half of them outside.
  void shadow(Box box, float radius, float softness, juce::Colour colour);

  /// Draws with `draw` moved to `origin` and enlarged by `factor`.
  template <class Draw>
  void enlarged(Point origin, float factor, const Draw& draw) {
    const juce::Graphics::ScopedSaveState state(graphics);
    graphics.addTransform(juce::AffineTransform::scale(factor).translated(origin));
    draw(*this);
  }
  /// Draws with `draw` inside `shape` only.
  template <class Draw>
  void clipped(const juce::Path& shape, const Draw& draw) {
    const juce::Graphics::ScopedSaveState state(graphics);
    graphics.reduceClipRegion(shape);
    draw(*this);
  }

  /// Device pixels to a panel pixel, where nothing is enlarged.
  int scale() const { return static_cast<int>(pixels); }
  const juce::Image& image() const { return picture; }

 private:
  float wholePixel(float at) const { return std::floor(at * pixels + 0.5F) / pixels; }

  float pixels;
  juce::Image picture;
  juce::Graphics graphics;
};

}  // namespace sivray::art
