// The two grounds, cobalt above the line and bisque below it, with everything that is printed on them or sunk into
// them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "Elements.h"
#include "Palette.h"

namespace sivray::art {
namespace {

constexpr float kWidth = 768.0F;
constexpr float kHeight = 468.0F;
constexpr float kLine = 131.0F;  // where cobalt ends
constexpr int kParts = 8;
constexpr float kPartStep = 92.0F;
constexpr float kFirstAxis = 62.5F;  // middle of the first part's column

constexpr TextStyle kCaption{8.7F, 0.6F};
constexpr TextStyle kWindowCaption{8.7F, 0.8F};
constexpr TextStyle kKnobCaption{6.75F};  // JUCE height 10, as the labels that the panel writes beside it
constexpr float kUpperCaptions = 258.0F;
constexpr float kMiddleCaptions = 332.0F;
constexpr float kLowerCaptions = 462.0F;

/// Small discs at pseudo-random positions from a fixed seed: the grain of clay and glaze.
struct Specks {
  std::uint32_t seed;
  int count;
  Box area;
  juce::Colour colour;
  float smallest, largest;  ///< Radius.
  float faintest, darkest;  ///< Alpha.
};

class Dice {
 public:
  explicit Dice(std::uint32_t seed) : state(seed) {}
  /// 0 to below 1, in steps that a float holds exactly.
  float roll() {
    state = state * 1664525U + 1013904223U;  // constants of a well-known linear congruential generator
    return static_cast<float>(state >> 8U) / 16777216.0F;
  }
  float between(float low, float high) { return low + (high - low) * roll(); }

 private:
  std::uint32_t state;
};

void scatter(Canvas& canvas, const Specks& specks) {
  Dice dice(specks.seed);
  for (int i = 0; i < specks.count; ++i) {
    const float x = dice.between(specks.area.getX(), specks.area.getRight());
    const float y = dice.between(specks.area.getY(), specks.area.getBottom());
    const float size = dice.roll();
    const float radius = specks.smallest + (specks.largest - specks.smallest) * size * size * size;  // few large ones
    canvas.fill(disc({x, y}, radius), specks.colour.withAlpha(dice.between(specks.faintest, specks.darkest)));
  }
}

void drawGlaze(Canvas& canvas) {
  canvas.fill(Box{0.0F, 0.0F, kWidth, kLine}, cobaltGround());
  scatter(canvas, {17, 260, {0.0F, 0.0F, kWidth, kLine - 2.0F}, rgb(0x8FA0FF), 0.3F, 0.7F, 0.03F, 0.10F});
  canvas.fill(Box{0.0F, 0.0F, kWidth, 10.0F}, {{0.0F, white(0.10F)}, {1.0F, white(0.0F)}});
  canvas.fill(Box{0.0F, 0.0F, kWidth, 1.0F}, white(0.16F));
  const juce::Colour pool = rgb(0x14185E);
  canvas.fill(Box{0.0F, 112.0F, kWidth, 18.0F},
              {{0.0F, pool.withAlpha(0.0F)}, {0.6F, pool.withAlpha(0.18F)}, {1.0F, pool.withAlpha(0.50F)}});
  canvas.fill(Box{0.0F, 129.0F, kWidth, 1.0F}, rgb(0x4450C4).withAlpha(0.5F));
  canvas.fill(Box{0.0F, 130.0F, kWidth, 1.0F}, rgb(0x6C78E8).withAlpha(0.75F));
}

void drawMakersName(Canvas& canvas, const Lettering& lettering) {
  juce::Path line;
  juce::PathStrokeType(1.4F).createStrokedPath(line, roundBox({28.5F, 21.0F, 18.0F, 18.0F}, 4.0F), {}, 8.0F);
  canvas.fill(line, kChalk);
  canvas.fill(Box{32.5F, 25.9F, 10.0F, 1.6F}, kChalk);
  canvas.fill(Box{36.7F, 25.9F, 1.6F, 9.6F}, kChalk);
  canvas.print(lettering.print("TESH", {13.0F, 1.6F}), 52.0F, 35.4F, kChalk);
}

void drawWindows(Canvas& canvas, const Lettering& lettering) {
  drawGlass(canvas, {269.0F, 16.0F, 258.0F, 28.0F}, 6.0F, Ground::cobalt);
  drawGlass(canvas, {28.0F, 76.0F, 254.0F, 31.0F}, 4.0F, Ground::cobalt);
  drawGlass(canvas, {304.0F, 76.0F, 178.0F, 31.0F}, 4.0F, Ground::cobalt);
  for (const float x : {210.0F, 246.0F}) {
    canvas.fill(Box{x, 80.0F, 1.0F, 23.0F}, kPeriwinkle.withAlpha(0.22F));
  }
  for (const float x : {192.0F, 468.0F}) {
    drawOpensMark(canvas, {x, 90.0F}, 7, kPeriwinkle.withAlpha(0.75F));
  }
  canvas.print(lettering.print("KIT", kWindowCaption), 28.0F, 69.0F, kLabel);
  canvas.print(lettering.print("EFFECT", kWindowCaption), 304.0F, 69.0F, kLabel);
}

void drawMaster(Canvas& canvas, const Lettering& lettering) {
  canvas.printCentred(lettering.print("MASTER", kKnobCaption), 707.5F, 118.0F, kLabel);
  canvas.fill(Box{659.0F, 58.0F, 1.0F, 58.0F}, black(0.2F));
  canvas.fill(Box{660.0F, 58.0F, 1.0F, 58.0F}, white(0.14F));
}

void drawCaptions(Canvas& canvas, const Lettering& lettering, const char* word, float baseLine) {
  const Word caption = lettering.print(word, kCaption);
  for (int part = 0; part < kParts; ++part) {
    canvas.printCentred(caption, kFirstAxis + kPartStep * static_cast<float>(part), baseLine, kCobalt);
  }
}

// The slot of one fader with its scale; `x` is the middle of the handle.
void drawFaderSlot(Canvas& canvas, float x) {
  drawGlass(canvas, {x - 2.0F, 306.0F, 4.0F, 134.0F}, 2.0F, Ground::bisque);
  const juce::Colour tick = kCobalt.withAlpha(0.8F);
  for (const float y : {311.0F, 371.0F, 401.0F, 431.0F}) {
    canvas.fill(Box{x - 24.0F, y, 6.0F, 1.0F}, tick);
    canvas.fill(Box{x + 18.0F, y, 6.0F, 1.0F}, tick);
  }
  canvas.fill(Box{x - 26.0F, 335.0F, 8.0F, 3.0F}, kCobalt);
  canvas.fill(Box{x + 18.0F, 335.0F, 8.0F, 3.0F}, kCobalt);
}

void drawClay(Canvas& canvas) {
  canvas.fill(Box{0.0F, kLine, kWidth, kHeight - kLine}, bisqueGround());
  canvas.fill(Box{0.0F, kLine, kWidth, 6.0F},
              {{0.0F, kNight.withAlpha(0.32F)}, {0.4F, kNight.withAlpha(0.12F)}, {1.0F, kNight.withAlpha(0.0F)}});
  scatter(canvas, {29, 700, {0.0F, kLine, kWidth, kHeight - kLine}, rgb(0x3A3326), 0.25F, 0.62F, 0.05F, 0.17F});
}

void drawPrint(Canvas& canvas, const Lettering& lettering, int page) {
  constexpr std::array<std::array<const char*, 2>, 2> knobs{{{"PITCH", "DECAY"}, {"PUNCH", "BOOST"}}};
  if (page < 2) {
    drawCaptions(canvas, lettering, knobs[static_cast<std::size_t>(page)][0], kUpperCaptions);
    drawCaptions(canvas, lettering, knobs[static_cast<std::size_t>(page)][1], kMiddleCaptions);
    return;
  }
  drawCaptions(canvas, lettering, "PAN", kUpperCaptions);
  drawCaptions(canvas, lettering, "LEVEL", kLowerCaptions);
  for (int part = 0; part < kParts; ++part) {
    drawFaderSlot(canvas, 62.0F + kPartStep * static_cast<float>(part));
  }
}

}  // namespace

const Ramp& cobaltGround() {
  static const Ramp ramp{{0.0F, rgb(0x272DA0)}, {0.6F, rgb(0x242995)}, {1.0F, rgb(0x20258C)}};
  return ramp;
}

const Ramp& bisqueGround() {
  static const Ramp ramp{{0.0F, rgb(0xDED8CB)}, {1.0F, rgb(0xD3CCBC)}};
  return ramp;
}

Word productName(const Lettering& lettering, TextStyle style) {
  Word name = lettering.print("SIVRVY", style);
  juce::Path& letter = name.letters[4].path;
  const Point middle = letter.getBounds().getCentre();
  letter.applyTransform(juce::AffineTransform::rotation(juce::MathConstants<float>::pi, middle.x, middle.y));
  return name;
}

void drawBackground(Canvas& canvas, const Lettering& lettering) {
  drawClay(canvas);
  drawGlaze(canvas);
  drawMakersName(canvas, lettering);
  const Word name = productName(lettering, {22.0F, 4.2F});
  canvas.print(name, 735.0F - name.width, 39.0F, kChalk);
  drawWindows(canvas, lettering);
  drawMaster(canvas, lettering);
}

void drawPage(Canvas& canvas, const Lettering& lettering, int page) {
  canvas.enlarged({0.0F, -kLine}, 1.0F, [&](Canvas& panel) {
    drawClay(panel);
    drawPrint(panel, lettering, page);
  });
}

}  // namespace sivray::art
