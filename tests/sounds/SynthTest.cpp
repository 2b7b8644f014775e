// Mathematical properties of the synthesis components.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "WaveMeter.h"
#include "content/synth/Filters.h"
#include "content/synth/Hall.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"
#include "content/synth/Room.h"
#include "content/waves/Leveller.h"

namespace {

using namespace sivray::content;
using support::decibels;

TEST(Math, AgreesWithTheLibrary) {
  for (double x = -7.3; x < 7.3; x += 0.0137) {
    EXPECT_NEAR(sineOfTurns(x), std::sin(2.0 * std::numbers::pi * x), 1e-13);
    EXPECT_NEAR(cosineOfTurns(x), std::cos(2.0 * std::numbers::pi * x), 1e-13);
    EXPECT_NEAR(powerOfTwo(x) / std::exp2(x), 1.0, 1e-14);
    EXPECT_NEAR(logarithmOfTwo(powerOfTwo(x)), x, 1e-13);
  }
  EXPECT_NEAR(power(3.0, 2.5), std::pow(3.0, 2.5), 1e-12);
  EXPECT_NEAR(factorOfDecibels(-20.0), 0.1, 1e-15);
  EXPECT_EQ(softClip(0.5), 0.5);
  EXPECT_LT(softClip(30.0), 1.0);
  EXPECT_NEAR(softClip(-0.61), -0.61, 1e-5);
}

TEST(Parts, EnvelopesFallSixtyDecibelsInTheirTime) {
  Envelope envelope({.attack = 0.01, .hold = 0.02, .t60 = 0.1, .delay = 0.005});
  std::vector<double> levels(44100);
  for (double& level : levels) {
    level = envelope.next();
  }
  EXPECT_EQ(levels[framesOf(0.004)], 0.0);
  EXPECT_NEAR(levels[framesOf(0.010)], 0.5, 0.01);
  EXPECT_EQ(levels[framesOf(0.030)], 1.0);
  EXPECT_NEAR(levels[framesOf(0.135)], 0.001, 1e-5);
  EXPECT_TRUE(envelope.isOver());
}

TEST(Parts, ModesRingAtTheirPitchForTheirTime) {
  const std::vector<Mode> modes{{.hertz = 3000.0, .gain = 0.3, .t60 = 0.05},
                                {.hertz = 1000.0, .gain = 0.5, .t60 = 0.5},
                                {.hertz = 30000.0, .gain = 1.0, .t60 = 9.0}};
  Signal steady(22050);
  addModes(steady, modes);
  Signal gliding(22050);
  addModes(gliding, std::span(modes).first(2), Glide{});
  for (std::size_t i = 0; i < 11025; i += 7) {
    const double time = static_cast<double>(i) / kSampleRate;
    double expected = 0.0;
    for (const Mode& mode : std::span(modes).first(2)) {
      expected +=
          mode.gain * std::sin(2.0 * std::numbers::pi * mode.hertz * time) * std::pow(10.0, -3.0 * time / mode.t60);
    }
    EXPECT_NEAR(steady[i], expected, 1e-5) << "a mode ends once nobody hears it";
    EXPECT_NEAR(gliding[i], expected, 1e-9);
  }
}

TEST(Parts, NoiseIsAsLoudInANarrowBandAsInAWideOne) {
  const Dice dice(5, 0);
  for (const auto& [low, high] : std::vector<std::pair<double, double>>{{500, 2000}, {2000, 12000}}) {
    Signal noise(44100);
    addNoise(noise, Noise(dice, 1, 0.5), {.low = low, .high = high, .poles = 2, .gain = 0.2, .shape = {.hold = 9.0}});
    EXPECT_NEAR(decibels(rmsOf(noise) * rmsOf(noise) / 0.04), -1.5, 0.7) << low;
  }
}

TEST(Filters, PassTheirBand) {
  const auto gainAt = [](Biquad filter, double hertz) {
    Signal tone(44100);
    addTone(tone, {.hertz = hertz, .shape = {.hold = 9.0}});
    filter.run(tone);
    tone.erase(tone.begin(), tone.begin() + 22050);
    return decibels(2.0 * rmsOf(tone) * rmsOf(tone));
  };
  EXPECT_NEAR(gainAt(Biquad::lowPass(1000), 1000), -3.0, 0.1);
  EXPECT_NEAR(gainAt(Biquad::lowPass(1000), 8000), -37.0, 2.0);
  EXPECT_NEAR(gainAt(Biquad::highPass(1000), 1000), -3.0, 0.1);
  EXPECT_NEAR(gainAt(Biquad::highPass(1000), 100), -40.0, 0.5);
  EXPECT_NEAR(gainAt(Biquad::bandPass(1000, 3), 1000), 0.0, 0.05);
  EXPECT_NEAR(gainAt(Biquad::highShelf(1000, 6), 12000), 6.0, 0.2);
  SweepFilter sweep;
  double low = 0.0;
  for (int i = 0; i < 4410; ++i) {
    low = sweep.next(1.0, Tuning().to(500.0), 0.7).low;
  }
  EXPECT_NEAR(low, 1.0, 1e-6);
}

TEST(Rooms, FallSixtyDecibelsInTheirTimeAndDifferBySide) {
  const auto fallOf = [](const Signal& signal, double from, double to) {
    const auto powerAt = [&](double seconds) {
      double sum = 0.0;
      for (std::size_t i = framesOf(seconds); i < framesOf(seconds + 0.05); ++i) {
        sum += signal[i] * signal[i];
      }
      return sum;
    };
    return decibels(powerAt(to) / powerAt(from));
  };
  Signal left(88200);
  addNoise(left, Noise(Dice(3, 0), 1, 0.0), {.low = 300, .high = 2000, .shape = {.t60 = 0.01}});
  Signal right = left;
  Signal close(left.begin(), left.begin() + 22050);
  addHall(left, Random(1), {.amount = 1.0, .seconds = 1.5, .bright = 18000});
  addHall(right, Random(2), {.amount = 1.0, .seconds = 1.5, .bright = 18000});
  addRoom(close, Random(1), {.amount = 1.0, .seconds = 0.6, .bright = 18000});
  EXPECT_NEAR(fallOf(left, 0.2, 0.95), -30.0, 5.0);
  EXPECT_NEAR(fallOf(close, 0.1, 0.4), -30.0, 8.0);
  EXPECT_NE(left, right);

  Signal click(4410);
  click[0] = 1.0;
  addRoom(click, Random(3), {.bright = 18000, .early = 0.5});
  EXPECT_EQ(*std::max_element(click.begin() + 1, click.begin() + 220), 0.0);
  EXPECT_GT(*std::max_element(click.begin() + 220, click.begin() + 1323), 0.1);
  EXPECT_LT(*std::max_element(click.begin() + 1700, click.end()), 0.01);
}

TEST(Leveller, MeetsItsTargetBetweenTwoPeaks) {
  const auto peakAfter = [](double hold, double t60, double target) {
    Sound sound{Signal(22050)};
    addTone(sound[0], {.hertz = 800, .shape = {.hold = hold, .t60 = t60}});
    level(sound, target);
    const double loud = loudnessOf(sound);
    const auto [low, high] = std::minmax_element(sound[0].begin(), sound[0].end());
    return std::pair(20.0 * std::log10(std::max(*high, -*low)), loud);
  };
  const auto [steadyPeak, steadyLoud] = peakAfter(1.0, 1.0, -8.0);
  EXPECT_NEAR(steadyLoud, -8.0, 0.01);
  EXPECT_LT(steadyPeak, -4.0);
  const auto [shortPeak, shortLoud] = peakAfter(0.0, 0.05, -8.0);
  EXPECT_NEAR(shortPeak, -1.0, 0.01);
  EXPECT_LT(shortLoud, -8.0);
  EXPECT_GT(shortLoud, -20.0);
  const auto [bentPeak, bentLoud] = peakAfter(0.0, 0.05, shortLoud - 1.0);
  EXPECT_NEAR(bentPeak, -1.0, 0.1) << "bent no more than it takes";
  EXPECT_NEAR(bentLoud, shortLoud - 1.0, 0.01);
}

}  // namespace
