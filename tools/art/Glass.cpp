// The dark displays, sunk into the ground, and their marks.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

constexpr float kShadeDepth = 4.0F;  // shade under the upper edge

}  // namespace

void drawGlass(Canvas& canvas, Box box, float radius, Ground ground) {
  const float lip = ground == Ground::bisque ? 0.55F : 0.20F;
  canvas.innerLine(box.expanded(1.0F), radius + 1.0F, {{0.0F, black(0.34F)}, {0.5F, black(0.16F)}, {1.0F, white(lip)}});
  const juce::Path pane = roundBox(box, radius);
  canvas.fill(pane, {{0.0F, rgb(0x0C0D22)}, {0.25F, rgb(0x12132A)}, {1.0F, rgb(0x191B3A)}});
  canvas.clipped(pane, [&](Canvas& inside) {
    inside.fill(box.withHeight(kShadeDepth), {{0.0F, black(0.45F)}, {1.0F, black(0.0F)}});
  });
}

void drawOpensMark(Canvas& canvas, Point topLeft, int width, juce::Colour colour) {
  const auto wide = static_cast<float>(width);
  if (canvas.scale() > 1) {
    canvas.fill(polygon({topLeft.translated(-0.25F, 0.0F), topLeft.translated(wide + 0.25F, 0.0F),
                         topLeft.translated(wide / 2.0F, wide / 2.0F + 0.6F)}),
                colour);
    return;
  }
  for (int row = 0; 2 * row < width; ++row) {
    const auto down = static_cast<float>(row);
    canvas.fill(Box{topLeft.x + down, topLeft.y + down, wide - 2.0F * down, 1.0F}, colour);
  }
}

void drawSampleDisplay(Canvas& canvas) {
  drawGlass(canvas, {1.0F, 1.0F, 69.0F, 29.0F}, 3.0F, Ground::bisque);
  canvas.fill(Box{5.0F, 15.0F, 61.0F, 1.0F}, kPeriwinkle.withAlpha(0.16F));
  drawOpensMark(canvas, {60.0F, 7.0F}, 5, kPeriwinkle.withAlpha(0.65F));
}

}  // namespace sivray::art
