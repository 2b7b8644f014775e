// The fader's handle: porcelain with a hollow for the finger and a cobalt line. The fader clips the picture to its
// middle 34 columns.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Elements.h"
#include "Palette.h"

namespace sivray::art {

void drawFader(Canvas& canvas) {
  const Box body{10.0F, 2.0F, 30.0F, 37.0F};
  constexpr float radius = 4.0F;
  canvas.shadow(body.translated(0.0F, 2.5F), radius, 1.65F, kNight.withAlpha(0.57F));
  canvas.fill(roundBox(body, radius), {{0.0F, rgb(0xFBF9F3)},
                                       {0.1F, rgb(0xEAE5D9)},
                                       {0.45F, rgb(0xD3CCBC)},
                                       {0.5F, rgb(0xC6BEAC)},
                                       {0.55F, rgb(0xF3EFE6)},
                                       {0.88F, rgb(0xE3DDD0)},
                                       {1.0F, rgb(0xB5AD9B)}});
  canvas.innerLine(body, radius, {{0.0F, white(0.9F)}, {0.5F, white(0.1F)}, {1.0F, black(0.22F)}});
  canvas.fill(Box{11.0F, 19.0F, 28.0F, 3.0F}, kCobalt);
}

}  // namespace sivray::art
