// The switches: small dark bodies with a word or a sign, which light up when on.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

constexpr float kSwitchRadius = 4.0F;
constexpr float kShadowDown = 0.8F;
constexpr float kSwitchShadowSoftness = 0.8F;
constexpr float kShadowInset = 0.5F;
constexpr TextStyle kSwitchWord{7.9F, 0.35F};
constexpr TextStyle kEnvelopeWord{7.65F, 0.3F};
constexpr TextStyle kGroupWord{7.75F, 0.3F};

enum class Look { off, set, now };

Ramp bodyRamp(Look look) {
  switch (look) {
    case Look::set:
      return {{0.0F, rgb(0xB4C2FA)}, {1.0F, rgb(0x8A9EEA)}};
    case Look::now:
      return {{0.0F, rgb(0xFFD24A)}, {1.0F, rgb(0xFFB700)}};
    case Look::off:
      break;
  }
  return {{0.0F, rgb(0x2C2E4E)}, {1.0F, rgb(0x191A34)}};
}

juce::Colour signColour(Look look) { return look == Look::off ? kPeriwinkle : kNight; }

void drawBody(Canvas& canvas, Box body, Look look) {
  canvas.shadow(body.reduced(kShadowInset, 0.0F).translated(0.0F, kShadowDown).withBottom(body.getBottom() + 1.55F),
                kSwitchRadius, kSwitchShadowSoftness, kNight.withAlpha(0.42F));
  canvas.fill(roundBox(body, kSwitchRadius), bodyRamp(look));
  canvas.innerLine(body, kSwitchRadius,
                   {{0.0F, white(look == Look::off ? 0.22F : 0.6F)}, {0.5F, white(0.0F)}, {1.0F, black(0.12F)}});
}

void drawWordSwitch(Canvas& canvas, const Lettering& lettering, Box body, const char* word, Point middle, Look look) {
  drawBody(canvas, body, look);
  canvas.printCentred(lettering.print(word, kSwitchWord), middle.x, middle.y, signColour(look));
}

// The signs of the envelope: a decay to its end, and a pulse as long as the note. 9 x 7, line 1.4.
juce::Path envelopeSign(bool gate) {
  juce::Path line;
  line.startNewSubPath(5.0F, 13.0F);
  line.lineTo(5.0F, 6.0F);
  if (gate) {
    line.lineTo(13.0F, 6.0F);
    line.lineTo(13.0F, 13.0F);
  } else {
    line.quadraticTo(8.0F, 12.0F, 14.0F, 13.0F);
  }
  juce::Path sign;
  const auto joint = gate ? juce::PathStrokeType::mitered : juce::PathStrokeType::curved;
  juce::PathStrokeType(1.4F, joint).createStrokedPath(sign, line, {}, 8.0F);
  return sign;
}

}  // namespace

void drawEnvelopeSwitch(Canvas& canvas, const Lettering& lettering, bool gate) {
  const Look look = gate ? Look::set : Look::off;
  drawBody(canvas, {0.0F, 0.0F, 45.0F, 17.0F}, look);
  canvas.fill(envelopeSign(gate), signColour(look));
  canvas.print(lettering.print(gate ? "GATE" : "SHOT", kEnvelopeWord), 17.5F, 11.5F, signColour(look));
}

void drawReverseSwitch(Canvas& canvas, const Lettering& lettering, bool on) {
  drawWordSwitch(canvas, lettering, {1.0F, 1.0F, 31.0F, 18.0F}, "REV", {16.5F, 13.0F}, on ? Look::set : Look::off);
}

void drawEffectSwitch(Canvas& canvas, const Lettering& lettering, bool on) {
  drawWordSwitch(canvas, lettering, {3.0F, 1.0F, 31.0F, 18.0F}, "FX", {18.5F, 13.0F}, on ? Look::set : Look::off);
}

void drawMuteSwitch(Canvas& canvas, const Lettering& lettering, bool on) {
  drawWordSwitch(canvas, lettering, {5.0F, 4.0F, 32.0F, 17.0F}, "MUTE", {20.85F, 15.5F}, on ? Look::now : Look::off);
}

void drawGroupSwitch(Canvas& canvas, const Lettering& lettering, int state) {
  const Box body{0.0F, 0.0F, 32.0F, 17.0F};
  drawBody(canvas, body, Look::off);
  if (state == 0) {
    canvas.fill(Box{15.5F, 4.0F, 1.0F, 9.0F}, kPeriwinkle.withAlpha(0.28F));
  }
  for (int cell = 1; cell <= 2; ++cell) {
    const Box box(cell == 1 ? 2.0F : 16.0F, 2.0F, 14.0F, 13.0F);
    const bool lit = cell == state;
    if (lit) {
      canvas.clipped(roundBox(box, 2.5F), [&](Canvas& inside) { inside.fill(body, bodyRamp(Look::set)); });
    }
    canvas.printCentred(lettering.print(cell == 1 ? "A" : "B", kGroupWord), box.getCentreX(), 11.5F,
                        lit ? kNight : kPeriwinkle.withAlpha(0.8F));
  }
}

}  // namespace sivray::art
