// The modulation effects that process several samples at once, in every kind of lanes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "core/FixedPoint.h"
#include "core/VectorCode.h"
#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/LaneScene.h"
#include "effects/modulation/GainModulator.h"
#include "effects/modulation/Q60393Phaser.h"
#include "effects/modulation/Ringmod.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"
#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace {

using namespace tesh::bramel::plugin::sivray::effects;

TEST(Modulation, EveryKindOfLanesSoundsAsThePlainOne) {
  for (const unsigned seed : {1U, 2U}) {
    scene::expectKindsToAgree<SivrayFxIMarloEffects<MarloChorus>>(seed, 600);
    scene::expectKindsToAgree<SivrayFxIMarloEffects<MarloEnsemble>>(seed, 600);
    scene::expectKindsToAgree<SivrayFxIMarloEffects<MarloPhase>>(seed, 600);
    scene::expectKindsToAgree<SivrayFxChorusFlanger>(seed, 600);
    scene::expectKindsToAgree<EffectAdapter<Q60393Phaser>>(seed, 600);
    scene::expectKindsToAgree<EffectAdapter<Ringmod>>(seed, 400);
    scene::expectKindsToAgree<EffectAdapter<Q60393Tremolo>>(seed, 400);
    scene::expectKindsToAgree<EffectAdapter<Q60393Autopan>>(seed, 400);
  }
}

TEST(Modulation, LanesStopWhereATriangleIsAtItsVeryTop) {
  constexpr int kTop = -2147483647 - 1;
  for (const int step : {0, 1, 3, 1 << 20}) {
    for (const int spread : {0, Q60393Autopan::kSpread}) {
      Q60393Autopan plain;
      plain.lfoStep = step;
      plain.phase = tesh::cofu::core::wrapSub(tesh::cofu::core::wrapSub(kTop, spread), 21 * step);
      plain.smoothLeft = plain.smoothRight = GainModulator::kHalf - 1;
      Q60393Autopan fast = plain;
      scene::Stereo expected(64);
      std::fill(expected.left.begin(), expected.left.end(), std::int16_t{-32768});
      scene::Stereo sound = expected;
      for (std::size_t i = 0; i < 64; ++i) {
        plain.step({}, expected.left[i], expected.right[i]);
      }
#if SIVRAY_FOR_X86
      const auto run = tesh::bramel::platform::supports(tesh::bramel::platform::VectorSet::avx2)
                           ? Q60393Autopan::runAvx2
                           : Q60393Autopan::runBaseline;
#else
      const auto run = Q60393Autopan::runBaseline;
#endif
      const std::size_t done = run(fast, sound.left.data(), sound.right.data(), 64);
      EXPECT_EQ(done, step == 0 ? 0U : 16U);
      for (std::size_t i = done; i < 64; ++i) {
        fast.step({}, sound.left[i], sound.right[i]);
      }
      EXPECT_EQ(sound, expected) << "step " << step;
      EXPECT_EQ(fast.smoothRight, plain.smoothRight);
    }
  }
}

}  // namespace
