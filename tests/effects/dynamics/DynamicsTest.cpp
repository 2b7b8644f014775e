// The drive and the tube stage against plain models; gains and tables of the other dynamics effects.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>
#include <vector>

#include "effects/dynamics/Kilnode.h"
#include "effects/dynamics/Q60393Drive.h"
#include "effects/dynamics/SivrayFxCompressor.h"
#include "effects/dynamics/SivrayFxDecimator.h"
#include "effects/dynamics/SivrayFxKilnode.h"
#include "effects/dynamics/TubeCurve.h"
#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/LaneScene.h"
#include "effects/modulation/PlainModel.h"
#include "effects/rhythmic/BeatGain.h"

namespace {

using namespace scene;
using namespace tesh::bramel::plugin::sivray::effects;

struct DriveModel : PlainModel {
  std::int64_t drive = linear(63), level = ((square(100) * 31489) >> 15) + 1279, pre[2]{}, last[2]{};
  Glide driveState, levelState, threshold;

  void edit(unsigned index, std::int64_t i) override {
    if (index < 2) {
      (index == 0 ? drive : level) = index == 0 ? linear(i) : ((square(i) * 31489) >> 15) + 1279;
    }
  }
  void reset() override {
    driveState.jump(drive);
    levelState.jump(level);
    threshold.jump(0);
    pre[0] = pre[1] = last[0] = last[1] = 0;
  }
  std::int64_t channel(int c, std::int64_t in) {
    const std::int64_t d = driveState.value();
    const std::int64_t z = sat(in + ((leaks(last[c], 2) * ((d * 23919) >> 15)) >> 15) + pre[c]);
    pre[c] = (d * in) >> 13;
    const std::int64_t bend = z > 0 ? 26213 : (z < 0 ? -26213 : 0);
    const std::int64_t e = std::max<std::int64_t>(std::abs(z) - threshold.value(), 0);
    last[c] = z - ((((e * e) >> 15) * bend) >> 15);
    return (levelState.value() * last[c]) >> 15;
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    driveState.to(drive, immediate);
    levelState.to(level, immediate);
    threshold.to(std::max<std::int64_t>(19660 - drive, 0), immediate);
    l = channel(0, l);
    r = channel(1, r);
  }
};

TEST(Dynamics, DriveMatchesItsPlainModelThroughRandomScenes) {
  playScenes<EffectAdapter<Q60393Drive>>(DriveModel());
  expectKindsToAgree<EffectAdapter<Q60393Drive>>(1, 400);
}

TEST(Dynamics, EveryKindOfLanesSoundsAsThePlainOne) {
  for (const unsigned seed : {1U, 2U}) {
    expectKindsToAgree<EffectAdapter<Pump>>(seed, 400);
    expectKindsToAgree<SivrayFxCompressor>(seed, 400);
    expectKindsToAgree<EffectAdapter<SivrayFxStereoCompressor::StereoCompressorImpl>>(seed, 400);
  }
}

TEST(Dynamics, KnobsKeepTheirEndsAndTheirOrder) {
  for (int knob = 1; knob <= kTopKnob; ++knob) {
    EXPECT_GE(Pump::settingsOf({0, knob - 1}).attackGain, Pump::settingsOf({0, knob}).attackGain);
    EXPECT_LT(Pump::settingsOf({0, knob - 1}).level, Pump::settingsOf({0, knob}).level);
    EXPECT_GT(SivrayFxDecimator::settingsOf({knob - 1, 0}).step, SivrayFxDecimator::settingsOf({knob, 0}).step);
  }
  EXPECT_EQ(Pump::settingsOf({0, 0}).level, 41285);
  EXPECT_EQ(Pump::settingsOf({0, kTopKnob}).level, 104031);
  EXPECT_EQ(SivrayFxDecimator::settingsOf({0, 0}).step, 65535U);
  EXPECT_EQ(SivrayFxDecimator::settingsOf({4, 0}).step, 23000U);
  EXPECT_EQ(SivrayFxDecimator::settingsOf({5, 0}).step, 18570U);
  EXPECT_EQ(SivrayFxDecimator::settingsOf({kTopKnob, 0}).step, 1486U);
}

TEST(Dynamics, PumpHoldsTheFirstHalfOfTheBeatDownAndBothRestartCodesStartItAgain) {
  EffectAdapter<Pump> pump;
  pump.setParameter(kEdit1, 50);  // a cycle of 22050 samples
  pump.reset();
  Stereo settle = constantSound(22050 * 2, 10000);
  process(pump, settle);
  EXPECT_LT(settle.left[22050 + 11000], 1500);
  EXPECT_GT(settle.left[22050 + 21000], 9000);
  for (const int code : {kRestart, kRhythmicRestart}) {
    pump.notify(code);
    Stereo again = constantSound(11000, 10000);
    process(pump, again);
    EXPECT_LT(*std::max_element(again.left.begin(), again.left.end()), 1500) << code;
  }
}

TEST(Dynamics, CompressorStartsNearSilenceAndItsGainComesUp) {
  SivrayFxCompressor compressor;
  compressor.notify(kRestart);
  Stereo sound(4000);
  for (std::size_t i = 0; i < 4000; ++i) {
    sound.left[i] = sound.right[i] = i % 100 < 50 ? 100 : -100;
  }
  process(compressor, sound);
  EXPECT_LT(sound.left[0], 5);
  EXPECT_GT(sound.left[3910], 400);
}

/// Returns one sample of the tube stage, computed with the standard library's exponential in double precision.
float tubeModel(float in, float drive, float mix) {
  const float x = drive * in * 12.0F;
  const auto exponential = [](float v) { return static_cast<float>(std::exp(static_cast<double>(v))); };
  const float y = x >= 0.0F ? (1.0F - exponential(-6.0F * x)) * 0.755F : -(1.0F - exponential(6.0F * x)) * 0.765F;
  return std::clamp((1.0F - mix) * in + mix * y, -1.0F, 1.0F);
}

TEST(TubeStage, MatchesThePlainModelWhileTheGainGlides) {
  SivrayFxKilnode effect;
  Dice dice(3);
  float drive = 0.0F;
  float mix = 0.0F;
  for (int round = 0; round < 60; ++round) {
    const int knob = dice.upTo(127);
    EXPECT_EQ(effect.setParameter(kEdit1, knob), knob);
    EXPECT_EQ(effect.setParameter(kEdit2, 5), 0);
    const float gain = static_cast<float>(knob) * 0.007874016F;
    if (dice.oneIn(5)) {
      effect.setImmediate(true);
      drive = gain * 0.25F;
      mix = gain;
    }
    Stereo sound = dice.input(dice.blockSize());
    sound.left[0] = 100;  // Not silent, so that the effect does not sleep.
    const Stereo input = sound;
    process(effect, sound);
    for (std::size_t i = 0; i < input.left.size(); ++i) {
      drive += (gain * 0.25F - drive) * 0.003F;
      mix += (gain - mix) * 0.003F;
      const float left = static_cast<float>(input.left[i]) * 3.051851e-5F;
      const float right = static_cast<float>(input.right[i]) * 3.051851e-5F;
      ASSERT_EQ(sound.left[i], static_cast<std::int16_t>(tubeModel(left, drive, mix) * 32767.0F)) << round << " " << i;
      ASSERT_EQ(sound.right[i], static_cast<std::int16_t>(tubeModel(right, drive, mix) * 32767.0F));
    }
  }
}

/// A Kilnode that raises its own gain slightly before each sample.
struct SelfTurning : tesh::bramel::plugin::fxkit::Kilnode {
  SelfTurning() { state->tickListener = turn; }
  static void turn(tesh::vimo::BasicEffect& tube) SIVRAY_NONBLOCKING {
    tube.setParameter(0, tube.parameter(0) + 1.0F / 1024.0F);
  }
};

TEST(TubeStage, TheTickListenerTurnsTheGainForTheSampleThatFollows) {
  SelfTurning ticked;
  tesh::bramel::plugin::fxkit::Kilnode plain;
  std::vector<float> sound(2 * 300, 0.5F);
  std::vector<float> expected = sound;
  ticked.processFloat({sound.data(), sound.data() + 300}, {sound.data(), sound.data() + 300}, 300);
  for (float* left = expected.data(); left < expected.data() + 300; ++left) {
    SelfTurning::turn(plain);
    plain.processFloat({left, left + 300}, {left, left + 300}, 1);
  }
  EXPECT_EQ(sound, expected);
}

TEST(TubeStage, TheFastestKindGivesTheSameBitsAsThePlainOne) {
  using tesh::bramel::plugin::fxkit::Kilnode;
  constexpr float kEdges[]{0.0F, -0.0F, 1.0F, -1.0F, 1e-40F, -3e37F, std::numeric_limits<float>::infinity()};
  Kilnode plain = [] {
    const VectorLimit limit(VectorSet::none);
    return Kilnode();
  }();
  Kilnode fast;
  Dice dice(4);
  for (int round = 0; round < 400; ++round) {
    const float gain = dice.oneIn(3) ? static_cast<float>(dice.upTo(127)) / 127.0F : plain.parameter(0);
    std::vector<float> expected(static_cast<std::size_t>(2 * dice.blockSize()));
    for (float& sample : expected) {
      sample = dice.oneIn(20) ? kEdges[dice.upTo(6)] : static_cast<float>(dice.upTo(40000) - 20000) / 20000.0F;
    }
    std::vector<float> sound = expected;
    const auto count = static_cast<unsigned>(sound.size() / 2);
    for (const auto& [tube, samples] : {std::pair{&plain, &expected}, {&fast, &sound}}) {
      const tesh::vimo::FloatBlock block{samples->data(), samples->data() + count};
      tube->setParameter(0, gain);
      tube->processFloat(block, block, count);
    }
    ASSERT_EQ(std::memcmp(sound.data(), expected.data(), sound.size() * sizeof(float)), 0) << round;
  }
}

TEST(TubeStage, ExponentialIsTheNearestSingleAndBoundedBelow) {
  constexpr auto exponentialOfNegative = [](float x) {
    using namespace tesh::bramel::plugin;
    return fxkit::exponentialOfNegative<fxkit::OneValue>(x);
  };
  for (float x = 0.0F; x > -40.0F; x -= 0.0001373F) {
    ASSERT_EQ(exponentialOfNegative(x), static_cast<float>(std::exp(static_cast<double>(x)))) << x;
  }
  EXPECT_LT(exponentialOfNegative(-1e30F), 1e-30F);
}

}  // namespace
