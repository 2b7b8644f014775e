// The pad: a cobalt face in a night body, whose lip below the face stays free for the caption.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

const Box kBody{1.0F, 0.0F, 69.0F, 70.0F};
constexpr float kBodyRadius = 8.0F;
const Box kFace{6.0F, 5.0F, 59.0F, 45.0F};
constexpr float kFaceRadius = 5.0F;
constexpr float kLitFaceRadius = 4.5F;
const Box kShadow{2.0F, 1.5F, 67.0F, 70.0F};
constexpr float kShadowSoftness = 1.2F;

constexpr float kGlowReach = 4.8F;
constexpr int kGlowSteps = 9;
constexpr float kGlowOuter = 0.075F;
constexpr float kGlowInner = 0.17F;
constexpr float kLightRadius = 44.0F;

void drawBody(Canvas& canvas) {
  canvas.shadow(kShadow, kBodyRadius, kShadowSoftness, kNight.withAlpha(0.5F));
  canvas.fill(roundBox(kBody, kBodyRadius), {{0.0F, rgb(0x2C2E4C)}, {0.7F, rgb(0x1C1D38)}, {1.0F, rgb(0x121328)}});
  canvas.innerLine(kBody, kBodyRadius, {{0.0F, white(0.26F)}, {0.3F, white(0.06F)}, {1.0F, black(0.4F)}});
}

void drawGlow(Canvas& canvas) {
  for (int step = 0; step < kGlowSteps; ++step) {
    const float share = static_cast<float>(step) / static_cast<float>(kGlowSteps);
    const float reach = kGlowReach * (1.0F - share);
    canvas.fill(roundBox(kFace.expanded(reach), kFaceRadius + reach),
                rgb(0xFFAE00).withAlpha(kGlowOuter + (kGlowInner - kGlowOuter) * share));
  }
}

void drawFaceOff(Canvas& canvas) {
  canvas.fill(roundBox(kFace, kFaceRadius), {{0.0F, rgb(0x3A43C6)}, {0.55F, rgb(0x2A30A8)}, {1.0F, kCobalt}});
  canvas.innerLine(
      kFace, kFaceRadius,
      {{0.0F, rgb(0xAEB8FF).withAlpha(0.75F)}, {0.2F, rgb(0x8C98FF).withAlpha(0.18F)}, {1.0F, black(0.25F)}});
}

void drawFaceOn(Canvas& canvas) {
  drawGlow(canvas);
  canvas.fillRadial(roundBox(kFace, kLitFaceRadius),
                    {{0.0F, rgb(0xFFE9A6)},
                     {4.0F / kLightRadius, rgb(0xFFE9A6)},
                     {22.0F / kLightRadius, kAmber},
                     {1.0F, rgb(0xF29A00)}},
                    kFace.getCentre(), kLightRadius);
  canvas.innerLine(kFace, kLitFaceRadius, {{0.0F, white(0.65F)}, {0.4F, white(0.0F)}, {1.0F, white(0.1F)}});
}

}  // namespace

void drawPad(Canvas& canvas, bool on) {
  drawBody(canvas);
  on ? drawFaceOn(canvas) : drawFaceOff(canvas);
}

}  // namespace sivray::art
