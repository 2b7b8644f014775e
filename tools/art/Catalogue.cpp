// The pictures of the guide on the settings page: tiles of the panel's ground with its own elements, enlarged.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

const Box kTile{12.0F, 6.0F, 228.0F, 169.0F};
constexpr float kTileRadius = 7.0F;
constexpr TextStyle kPadCaption{6.75F};  // the panel's own pad captions: JUCE height 10
const Point kKnobMiddle{28.5F, 27.0F};

void drawTile(Canvas& canvas, const Ramp& ground) {
  canvas.fill(roundBox(kTile, kTileRadius), ground);
  canvas.innerLine(kTile, kTileRadius, {{0.0F, black(0.12F)}, {1.0F, black(0.12F)}});
}

void knobAt(Canvas& canvas, Point middle, float factor, Ring ring, int frame) {
  canvas.enlarged(middle - kKnobMiddle * factor, factor, [&](Canvas& knob) { drawKnob(knob, ring, frame); });
}

void padAt(Canvas& canvas, Point origin, float factor, bool on) {
  canvas.enlarged(origin, factor, [&](Canvas& pad) { drawPad(pad, on); });
}

void drawSivray(Canvas& canvas, const Lettering& lettering) {
  drawTile(canvas, bisqueGround());
  canvas.clipped(roundBox(kTile, kTileRadius),
                 [](Canvas& inside) { inside.fill(kTile.withBottom(84.0F), cobaltGround()); });
  canvas.printCentred(productName(lettering, {41.0F, 5.9F}), 123.0F, 62.0F, kChalk);
  for (int pad = 0; pad < 3; ++pad) {
    padAt(canvas, {30.0F + 66.0F * static_cast<float>(pad), 101.0F}, 0.84F, pad == 1);
  }
}

void drawPads(Canvas& canvas, const Lettering& lettering) {
  drawTile(canvas, bisqueGround());
  constexpr std::array<const char*, 2> notes{"C1", "C#1"};
  for (int i = 0; i < 2; ++i) {
    canvas.enlarged({26.0F + 103.5F * static_cast<float>(i), 42.0F}, 1.35F, [&](Canvas& pad) {
      drawPad(pad, i == 0);
      pad.printCentred(lettering.print(notes[static_cast<std::size_t>(i)], kPadCaption), 35.5F, 61.7F, white(0.5F));
    });
  }
}

void drawSound(Canvas& canvas) {
  drawTile(canvas, bisqueGround());
  knobAt(canvas, {129.0F, 89.5F}, 2.5F, Ring::biDirectional, 88);
}

void drawCharacter(Canvas& canvas, const Lettering& lettering) {
  drawTile(canvas, bisqueGround());
  knobAt(canvas, {85.0F, 75.0F}, 1.55F, Ring::sweep, 84);
  knobAt(canvas, {172.0F, 75.0F}, 1.55F, Ring::sweep, 40);
  canvas.enlarged({54.0F, 126.0F}, 1.7F, [&](Canvas& part) { drawReverseSwitch(part, lettering, false); });
  canvas.enlarged({138.0F, 126.0F}, 1.7F, [&](Canvas& part) { drawEffectSwitch(part, lettering, true); });
}

void drawMix(Canvas& canvas) {
  drawTile(canvas, bisqueGround());
  constexpr std::array<Point, 3> handles{{{56.0F, 47.0F}, {118.5F, 29.0F}, {181.0F, 91.0F}}};
  for (const Point handle : handles) {
    drawGlass(canvas, {handle.x - 2.5F, 28.0F, 5.0F, 133.0F}, 2.0F, Ground::bisque);
    canvas.enlarged(handle.translated(-25.0F, 0.0F), 1.0F, [](Canvas& fader) { drawFader(fader); });
  }
}

void drawEffects(Canvas& canvas) {
  drawTile(canvas, cobaltGround());
  knobAt(canvas, {82.0F, 90.0F}, 1.53F, Ring::sweep, 45);
  knobAt(canvas, {173.5F, 90.0F}, 1.53F, Ring::sweep, 92);
}

void drawKits(Canvas& canvas, const Lettering& lettering) {
  drawTile(canvas, cobaltGround());
  drawGlass(canvas, {24.0F, 60.0F, 204.0F, 60.0F}, 6.0F, Ground::cobalt);
  canvas.printCentred(lettering.display("45:Deep House", 30.0F), 126.0F, 101.0F, kPeriwinkle);
}

void drawSamples(Canvas& canvas, const Lettering& lettering) {
  drawTile(canvas, bisqueGround());
  canvas.enlarged({35.0F, 50.0F}, 2.57F, [&](Canvas& display) {
    drawSampleDisplay(display);
    display.printCentred(lettering.display("01", 13.0F), 37.0F, 11.0F, kPeriwinkle);
    display.printCentred(lettering.display("Deep Kick", 13.0F), 35.5F, 26.0F, kPeriwinkle);
  });
}

}  // namespace

void drawCatalogueTile(Canvas& canvas, const Lettering& lettering, int row) {
  switch (row) {
    case 0:
      return drawSivray(canvas, lettering);
    case 1:
      return drawPads(canvas, lettering);
    case 2:
      return drawSound(canvas);
    case 3:
      return drawCharacter(canvas, lettering);
    case 4:
      return drawMix(canvas);
    case 5:
      return drawEffects(canvas);
    case 6:
      return drawKits(canvas, lettering);
    default:
      return drawSamples(canvas, lettering);
  }
}

}  // namespace sivray::art
