// Draws shapes, gradients and shadows through JUCE's graphics.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Canvas.h"

namespace sivray::art {
namespace {

constexpr int kShadowSteps = 8;
constexpr int kStopsBetween = 16;

juce::Colour between(juce::Colour from, juce::Colour to, float share) {
  const auto mix = [share](float a, float b) { return a + (b - a) * share; };
  return juce::Colour::fromFloatRGBA(
      mix(from.getFloatRed(), to.getFloatRed()), mix(from.getFloatGreen(), to.getFloatGreen()),
      mix(from.getFloatBlue(), to.getFloatBlue()), mix(from.getFloatAlpha(), to.getFloatAlpha()));
}

// Colour and opacity are interpolated separately; otherwise a ramp from a faint dark to a strong light colour would
// pass through grey. JUCE interpolates premultiplied colours and rounds down, so the ramp gets many close stops.
void addStops(juce::ColourGradient& gradient, const Ramp& ramp) {
  gradient.addColour(0.0, ramp.front().colour);
  for (std::size_t i = 1; i < ramp.size(); ++i) {
    const Stop& from = ramp[i - 1];
    const Stop& to = ramp[i];
    for (int step = 1; step <= kStopsBetween; ++step) {
      const float share = static_cast<float>(step) / static_cast<float>(kStopsBetween);
      gradient.addColour(static_cast<double>(from.at + (to.at - from.at) * share),
                         between(from.colour, to.colour, share));
    }
  }
}

juce::ColourGradient downwards(Box box, const Ramp& ramp) {
  juce::ColourGradient gradient;
  gradient.point1 = {0.0F, box.getY()};
  gradient.point2 = {0.0F, box.getBottom()};
  addStops(gradient, ramp);
  return gradient;
}

}  // namespace

juce::Path roundBox(Box box, float radius) {
  // Distance of the control points from the corner for the Bezier curve that best approximates a quarter circle.
  const float control = radius * (1.0F - 0.5523F);
  const float left = box.getX();
  const float right = box.getRight();
  const float top = box.getY();
  const float bottom = box.getBottom();
  juce::Path path;
  path.startNewSubPath(left + radius, top);
  path.lineTo(right - radius, top);
  path.cubicTo(right - control, top, right, top + control, right, top + radius);
  path.lineTo(right, bottom - radius);
  path.cubicTo(right, bottom - control, right - control, bottom, right - radius, bottom);
  path.lineTo(left + radius, bottom);
  path.cubicTo(left + control, bottom, left, bottom - control, left, bottom - radius);
  path.lineTo(left, top + radius);
  path.cubicTo(left, top + control, left + control, top, left + radius, top);
  path.closeSubPath();
  return path;
}

juce::Path disc(Point centre, float radius) {
  juce::Path path;
  path.addEllipse(Box(2.0F * radius, 2.0F * radius).withCentre(centre));
  return path;
}

juce::Path polygon(std::initializer_list<Point> corners) {
  juce::Path path;
  path.startNewSubPath(*corners.begin());
  for (const Point corner : corners) {
    path.lineTo(corner);
  }
  path.closeSubPath();
  return path;
}

Canvas::Canvas(int width, int height, int scale)
    : pixels(static_cast<float>(scale)),
      picture(juce::Image::ARGB, width * scale, height * scale, true, juce::SoftwareImageType()),
      graphics(picture) {
  graphics.addTransform(juce::AffineTransform::scale(pixels));
}

void Canvas::fill(const juce::Path& shape, juce::Colour colour) {
  graphics.setColour(colour);
  graphics.fillPath(shape);
}

void Canvas::fill(Box box, juce::Colour colour) {
  graphics.setColour(colour);
  graphics.fillRect(box);
}

void Canvas::fill(Box box, const Ramp& ramp) {
  graphics.setGradientFill(downwards(box, ramp));
  graphics.fillRect(box);
}

void Canvas::fill(const juce::Path& shape, const Ramp& ramp) {
  graphics.setGradientFill(downwards(shape.getBounds(), ramp));
  graphics.fillPath(shape);
}

void Canvas::fillRadial(const juce::Path& shape, const Ramp& ramp, Point centre, float radius) {
  juce::ColourGradient gradient;
  gradient.isRadial = true;
  gradient.point1 = centre;
  gradient.point2 = centre.translated(radius, 0.0F);
  addStops(gradient, ramp);
  graphics.setGradientFill(gradient);
  graphics.fillPath(shape);
}

void Canvas::print(const Word& word, float x, float baseLine, juce::Colour colour) {
  for (const Letter& letter : word.letters) {
    juce::Path path = letter.path;
    path.applyTransform(juce::AffineTransform::translation(wholePixel(x + letter.x), wholePixel(baseLine)));
    fill(path, colour);
  }
}

void Canvas::printCentred(const Word& word, float x, float baseLine, juce::Colour colour) {
  print(word, x - (word.width - word.tracking) / 2.0F, baseLine, colour);
}

void Canvas::innerLine(Box box, float radius, const Ramp& ramp) {
  juce::Path line = roundBox(box, radius);
  line.addPath(roundBox(box.reduced(1.0F), radius - 1.0F));
  line.setUsingNonZeroWinding(false);
  fill(line, ramp);
}

void Canvas::shadow(Box box, float radius, float softness, juce::Colour colour) {
  // Boxes drawn on top of each other, from the widest to the narrowest, each adding one step of darkness.
  float reached = 0.0F;
  for (int step = 1; step <= kShadowSteps; ++step) {
    const float share = static_cast<float>(step) / static_cast<float>(kShadowSteps);
    const float aim = colour.getFloatAlpha() * share;
    const float growth = softness * (0.5F - share + 0.5F / static_cast<float>(kShadowSteps));
    fill(roundBox(box.expanded(growth), radius + growth), colour.withAlpha((aim - reached) / (1.0F - reached)));
    reached = aim;
  }
}

}  // namespace sivray::art
