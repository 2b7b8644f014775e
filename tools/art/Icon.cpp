// The icon, composed of the panel's pad, its background and its knobs' amber.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Icon.h"

#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

/// The side of the drawing, which is scaled to the icon's size.
constexpr float kSide = 100.0F;
constexpr int kLeastWithGround = 32;

const Box kGround{3.0F, 3.0F, 94.0F, 94.0F};
constexpr float kGroundRadius = 20.0F;
const Point kPadOnGround{14.0F, 14.6F};

/// The pad's own picture is 72 wide, with one pixel free at its left and two at its right.
constexpr float kPadWidth = 72.0F;
const Point kPadAlone{0.7F, 1.4F};

void drawGround(Canvas& canvas) {
  canvas.fill(roundBox(kGround, kGroundRadius), cobaltGround());
  canvas.innerLine(kGround, kGroundRadius, {{0.0F, white(0.4F)}, {0.4F, white(0.05F)}, {1.0F, black(0.35F)}});
}

}  // namespace

juce::Image drawIcon(int side) {
  Canvas canvas(side, side, 1);
  const auto pad = [](Canvas& inside) { drawPad(inside, true); };
  if (side < kLeastWithGround) {
    canvas.enlarged(kPadAlone * (static_cast<float>(side) / kPadWidth), static_cast<float>(side) / kPadWidth, pad);
  } else {
    canvas.enlarged({}, static_cast<float>(side) / kSide, [&](Canvas& inside) {
      drawGround(inside);
      inside.enlarged(kPadOnGround, 1.0F, pad);
    });
  }
  return canvas.image();
}

}  // namespace sivray::art
