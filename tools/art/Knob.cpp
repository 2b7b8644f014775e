// The knob: a porcelain cap in a night collar with a ring of light.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

const Point kCentre{28.5F, 27.0F};
const Point kShadowCentre{28.5F, 29.5F};
constexpr float kShadowRadius = 25.5F;
constexpr float kCollarRadius = 24.5F;
constexpr float kRingRadius = 21.0F;
constexpr float kRingWidth = 3.0F;
constexpr float kCapShadowRadius = 20.0F;
constexpr float kCapRadius = 17.0F;
constexpr float kDishRadius = 14.5F;
constexpr float kPointerInner = 6.0F;
constexpr float kPointerOuter = 14.0F;
constexpr float kPointerWidth = 3.0F;

constexpr float kTurn = 135.0F;        // degrees from the middle to either end
constexpr float kSweepOverlap = 2.4F;  // the light reaches past the pointer's middle
constexpr float kShortestLight = 4.0F;
constexpr float kMiddleOverlap = 4.0F;
constexpr int kMiddleFrame = 64;
constexpr int kLastFrame = kKnobFrames - 1;

const juce::Colour kUnlit = rgb(0x2F346C);

struct Arc {
  float from;
  float to;
};

float pointerAngle(Ring ring, int frame) {
  const auto position = static_cast<float>(frame);
  if (ring == Ring::sweep) {
    return -kTurn + 2.0F * kTurn * position / static_cast<float>(kLastFrame);
  }
  const int steps = frame > kMiddleFrame ? kLastFrame - kMiddleFrame : kMiddleFrame;
  return kTurn * static_cast<float>(frame - kMiddleFrame) / static_cast<float>(steps);
}

Arc litArc(Ring ring, float angle) {
  if (ring == Ring::sweep) {
    return {-kTurn, std::max(-kTurn + kShortestLight, std::min(kTurn, angle + kSweepOverlap))};
  }
  return {std::min(0.0F, angle) - kMiddleOverlap, std::max(0.0F, angle) + kMiddleOverlap};
}

juce::Path ringPath(Arc arc) {
  const float outer = kRingRadius + kRingWidth / 2.0F;
  const float inner = kRingRadius - kRingWidth / 2.0F;
  juce::Path path;
  path.addPieSegment(Box(2.0F * outer, 2.0F * outer).withCentre(kCentre), juce::degreesToRadians(arc.from),
                     juce::degreesToRadians(arc.to), inner / outer);
  return path;
}

void drawCollar(Canvas& canvas) {
  canvas.fillRadial(disc(kShadowCentre, kShadowRadius),
                    {{0.0F, kNight.withAlpha(0.60F)},
                     {20.0F / kShadowRadius, kNight.withAlpha(0.60F)},
                     {23.0F / kShadowRadius, kNight.withAlpha(0.38F)},
                     {1.0F, kNight.withAlpha(0.0F)}},
                    kShadowCentre, kShadowRadius);
  canvas.fill(disc(kCentre, kCollarRadius), {{0.0F, rgb(0x0B0C1E)}, {1.0F, rgb(0x1B1C38)}});
  canvas.innerLine(Box(2.0F * kCollarRadius, 2.0F * kCollarRadius).withCentre(kCentre), kCollarRadius,
                   {{0.0F, black(0.35F)}, {0.6F, black(0.0F)}, {1.0F, white(0.18F)}});
}

void drawCap(Canvas& canvas) {
  canvas.fillRadial(disc(kShadowCentre, kCapShadowRadius),
                    {{0.0F, black(0.8F)}, {13.0F / kCapShadowRadius, black(0.8F)}, {1.0F, black(0.0F)}}, kShadowCentre,
                    kCapShadowRadius);
  canvas.fill(disc(kCentre, kCapRadius), {{0.0F, rgb(0xFBF9F3)}, {0.5F, rgb(0xE9E4D8)}, {1.0F, rgb(0xB5AD9B)}});
  canvas.fill(disc(kCentre, kDishRadius), {{0.0F, rgb(0xDAD4C6)}, {1.0F, rgb(0xF6F3EB)}});
}

void drawPointer(Canvas& canvas, float angle) {
  juce::Path pointer;
  pointer.addRoundedRectangle(kCentre.x - kPointerWidth / 2.0F, kCentre.y - kPointerOuter - kPointerWidth / 2.0F,
                              kPointerWidth, kPointerOuter - kPointerInner + kPointerWidth, kPointerWidth / 2.0F);
  pointer.applyTransform(juce::AffineTransform::rotation(juce::degreesToRadians(angle), kCentre.x, kCentre.y));
  canvas.fill(pointer, kCobalt);
}

}  // namespace

void drawKnob(Canvas& canvas, Ring ring, int frame) {
  const float angle = pointerAngle(ring, frame);
  drawCollar(canvas);
  canvas.fill(ringPath({-kTurn, kTurn}), kUnlit);
  canvas.fill(ringPath(litArc(ring, angle)), kPeriwinkle);
  drawCap(canvas);
  drawPointer(canvas, angle);
}

}  // namespace sivray::art
