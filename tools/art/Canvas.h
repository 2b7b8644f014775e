// A picture under way: shapes in panel pixels, drawn at the picture's scale.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <vector>

namespace sivray::art {

using Point = juce::Point<float>;
using Box = juce::Rectangle<float>;

/// A colour of a ramp and its place on it, 0 to 1.
struct Stop {
  float at;
  juce::Colour colour;
};
using Ramp = std::vector<Stop>;

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

  const juce::Image& image() const { return picture; }

 private:
  juce::Image picture;
  juce::Graphics graphics;
};

}  // namespace sivray::art
