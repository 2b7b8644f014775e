// The hall reverb against its plain model, its tables, the gate of the gate reverb, and the reverbs in sample lanes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/LaneScene.h"
#include "effects/reverbs/GateReverb.h"
#include "effects/reverbs/HallFlow.h"
#include "effects/reverbs/ReverbModels.h"
#include "effects/reverbs/SivrayFxReverb.h"
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"
#include "effects/reverbs/SivrayFxReverbSmoothHallAdapter.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// The hall reverb without the wrapper that lets it sleep.
struct HallAlone : SivrayFxReverbSmoothHall {
  void setParameter(unsigned index, float value) override { SivrayFxReverbSmoothHall::setParameter(index, value); }
  void setParameter(unsigned index, int knob) { setParameter(index - kEdit1, static_cast<float>(knob) / 127.0F); }
  void setTempo(int) {}
  void setImmediate(bool) {}
  void process(StereoBlock& block, unsigned count) { processInt16(block, block, count); }
};

TEST(Reverbs, HallSoundsAsItsPlainModel) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    SivrayFxReverbSmoothHallAdapter fast;
    model::Hall plain;
    scene::expectSameSound(fast, plain, seed, 250);
  }
}

TEST(Reverbs, HallSleepsThroughSilenceAndWakesAsItsPlainModel) {
  SivrayFxReverbSmoothHallAdapter fast;
  model::Hall plain;
  fast.reset();
  plain.reset();
  scene::Dice dice(9);
  for (int b = 0; b < 1200; ++b) {
    if (b % 97 == 0) {
      fast.setParameter(kEdit2, b % 128);
      plain.setParameter(kEdit2, b % 128);
    }
    scene::Stereo a = b % 300 < 10 ? dice.input(500) : scene::Stereo(500);
    scene::Stereo c = a;
    StereoBlock blockOfFast = a.block();
    StereoBlock blockOfModel = c.block();
    fast.process(blockOfFast, 500);
    plain.process(blockOfModel, 500);
    ASSERT_EQ(a, c) << b;
    ASSERT_EQ(plain.sleeping, plain.silentCountdown == 0);
  }
  EXPECT_TRUE(plain.sleeping);
}

TEST(Reverbs, HallTablesHoldTheNumbersOfTheRunningRate) {
  EXPECT_EQ(kDiffuserDelays, (HallDelays{1281, 2391, 1699, 1042}));
  EXPECT_EQ(kTankDelays, (HallDelays{6525, 6084, 5467, 5070}));
  EXPECT_EQ(kTapsA, (HallDelays{3301, 1537, 1317, 655}));
  EXPECT_EQ(kTapsB, (HallDelays{2552, 2419, 1758, 1096}));
  EXPECT_EQ(HallDampers().ofLast, (std::array<std::int16_t, 8>{11949, 0, 11141, 0, 10011, 0, 9284, 0}));
  EXPECT_LT(hallGains[0][0], 2);
  EXPECT_NEAR(hallGains[127][0], 32767 * std::pow(0.001, 0.014795834), 1.0);
  for (std::size_t knob = 1; knob < 128; ++knob) {
    EXPECT_GT(hallGains[knob][0], hallGains[knob - 1][0]);
    EXPECT_LT(hallGains[knob][3], hallGains[knob - 1][3]);
  }
}

TEST(Reverbs, GateHoldsForTheTimeOfItsKnobAndThenCloses) {
  constexpr int kHoldStep = 2147483647 / 1000;
  ReverbGate gate;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(gate.step(0, 0, kHoldStep), 32767);
  }
  int gain = 32767;
  for (int i = 0; i < 2000; ++i) {
    const int next = gate.step(0, 0, kHoldStep);
    ASSERT_LE(next, gain);
    gain = next;
  }
  EXPECT_LT(gain, 5700);
  EXPECT_GT(gate.step(3276, 0, kHoldStep), gain) << "a peak at the threshold opens it";
}

TEST(Reverbs, EveryKindSoundsAsThePlainOne) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    scene::expectKindsToAgree<HallAlone>(seed, 600);
    scene::expectKindsToAgree<SivrayFxReverb>(seed, 600);
    scene::expectKindsToAgree<EffectAdapter2<GateReverb>>(seed, 600);
  }
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
