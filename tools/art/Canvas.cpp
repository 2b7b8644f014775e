// SPDX-License-Identifier: GPL-3.0-or-later
#include "Canvas.h"

namespace sivray::art {
namespace {

constexpr int kShadowSteps = 8;

void addStops(juce::ColourGradient& gradient, const Ramp& ramp) {
  gradient.addColour(0.0, ramp.front().colour);
  gradient.addColour(1.0, ramp.back().colour);
  for (const Stop& stop : ramp) {
    gradient.addColour(static_cast<double>(stop.at), stop.colour);
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
  juce::Path path;
  path.addRoundedRectangle(box, radius);
  return path;
}

juce::Path disc(Point centre, float radius) {
  juce::Path path;
  path.addEllipse(Box(2.0F * radius, 2.0F * radius).withCentre(centre));
  return path;
}

juce::Path polygon(std::initializer_list<Point> corners) {
  juce::Path path;
  for (const Point corner : corners) {
    path.isEmpty() ? path.startNewSubPath(corner) : path.lineTo(corner);
  }
  path.closeSubPath();
  return path;
}

Canvas::Canvas(int width, int height, int scale)
    : picture(juce::Image::ARGB, width * scale, height * scale, true, juce::SoftwareImageType()), graphics(picture) {
  graphics.addTransform(juce::AffineTransform::scale(static_cast<float>(scale)));
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

void Canvas::innerLine(Box box, float radius, const Ramp& ramp) {
  juce::Path line = roundBox(box, radius);
  line.addRoundedRectangle(box.reduced(1.0F), radius - 1.0F);
  line.setUsingNonZeroWinding(false);
  fill(line, ramp);
}

void Canvas::shadow(Box box, float radius, float softness, juce::Colour colour) {
  // Boxes on top of each other from the widest to the narrowest, each of which adds one step of darkness.
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
