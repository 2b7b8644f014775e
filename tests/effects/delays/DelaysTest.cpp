// The delay times for the knobs' positions, and the delays in sample lanes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "effects/delays/SivrayFxBpmSyncDelay.h"
#include "effects/delays/SivrayFxShortDelay.h"
#include "effects/interfaces/LaneScene.h"
#include "effects/interfaces/SivrayFxMemoryManager.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Returns the frame of the first echo of a click at frame 0, after all smoothed values have settled.
template <typename Effect>
int firstEcho(Effect& effect) {
  scene::Stereo settle(200000);
  StereoBlock block = settle.block();
  effect.process(block, 200000);
  scene::Stereo s(140000);
  s.left[0] = 20000;
  block = s.block();
  effect.process(block, 140000);
  const auto found = std::find_if(s.right.begin(), s.right.end(), [](int x) { return std::abs(x) > 1000; });
  return static_cast<int>(found - s.right.begin());
}

TEST(Delays, ShortDelayEchoesOnTheOtherSideAfterTheTimeOfItsKnob) {
  for (const auto& [knob, samples] : {std::pair{0, 2}, {64, 4160}, {127, 16382}}) {
    SivrayFxMemoryManager memory;
    SivrayFxShortDelay delay;
    memory.add(&delay);
    delay.reset();
    delay.setParameter(kEdit1, knob);
    delay.setParameter(kEdit2, 127);
    EXPECT_EQ(firstEcho(delay), samples) << knob;
  }
}

TEST(Delays, BpmDelayKeepsToNotesThatFitItsLine) {
  // The echo sounds one sample after the tap is read.
  for (const auto& [tempo, knob, samples] :
       {std::tuple{1200, 75, 22050}, {1205, 75, 22050}, {1200, 127, 88200}, {400, 127, 99225}, {400, 100, 99225}}) {
    SivrayFxMemoryManager memory;
    SivrayFxBpmSyncDelay delay;
    memory.add(&delay);
    delay.reset();
    delay.setTempo(tempo);
    delay.setParameter(kEdit1, knob);
    delay.setParameter(kEdit2, 127);
    EXPECT_NEAR(firstEcho(delay), samples + 1, 1) << tempo << " " << knob;
  }
}

TEST(Delays, EveryKindSoundsAsThePlainOne) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    scene::expectKindsToAgree<SivrayFxShortDelay>(seed, 600);
    scene::expectKindsToAgree<SivrayFxBpmSyncDelay>(seed, 1200);
  }
}

TEST(Delays, BpmDelaySoundsTheSameInLanesAroundTheShortestTimeThatFitsThem) {
  for (const int samples : {13, 14, 15, 16, 17}) {
    scene::InKind<SivrayFxBpmSyncDelay> plain(scene::VectorSet::none);
    scene::InKind<SivrayFxBpmSyncDelay> fast(scene::VectorSet::avx2);
    const scene::Stereo in = scene::Dice(1).input(2000);
    scene::Stereo expected;
    scene::Stereo sound;
    for (const auto& [delay, out] : {std::pair{&plain, &expected}, {&fast, &sound}}) {
      delay->setTempo(165375 / samples * 10);
      delay->setParameter(kEdit1, 0);
      delay->setParameter(kEdit2, 127);
      delay->reset();
      delay->render(in, *out);
    }
    EXPECT_EQ(sound, expected) << samples;
  }
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
