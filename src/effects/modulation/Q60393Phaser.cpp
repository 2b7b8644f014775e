// The all-pass chain of the phaser.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/Q60393Phaser.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/StereoLanes.h"
#include "effects/modulation/PhaserStep.h"

namespace tesh::bramel::plugin::sivray::effects {

using cofu::core::kFullScale;

namespace {

/// Largest depth, Q15: 0.4914.
constexpr std::int32_t kLargestDepth = 16102;

/// Needs no limit: kManual less a depth of 0 to 16101 is always within 0 .. 32767.
Stereo128 coefficientAt(Stereo128 phase, std::int32_t depth) {
  const Stereo128 triangle = magnitude(phase).shiftedRightUnsigned<16>();
  const Stereo128 held = triangle - triangle.shiftedRight<15>();
  return Stereo128::both(Q60393Phaser::kManual) - mul15(Stereo128::both(depth), held);
}

}  // namespace

Q60393Phaser::Settings Q60393Phaser::settingsOf(const Knobs& knobs) {
  return {static_cast<std::int32_t>(valueAt(lfoTable, knobs.edit1)),
          cofu::core::mul15(valueAt(linearTable, knobs.edit2), kLargestDepth)};
}

void Q60393Phaser::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  const Stereo128 moved = Stereo128(phase) + Stereo128::both(to.lfoStep);
  phase = moved;
  const Stereo128 a = coefficientAt(moved, depth.value());
  const Stereo128 x = Stereo128::both((left + right) >> 1);
  auto& s = stages;
  const auto stage = [&s](std::size_t j) { return Stereo128(s[j]); };
  const std::array<Stereo128, 5> old{leakTwice(stage(0)), leakTwice(stage(1)), leakTwice(stage(2)), leakTwice(stage(3)),
                                     leakTwice(stage(4))};
  const auto allPass = [&](std::size_t j) {
    return (mul15(a, old[j]) - mul15(stage(j - 1), a) + old[j - 1]).saturated();
  };
  s[0] = (x + leak(mul15(Stereo128::both(kResonance), stage(2)))).saturated();
  s[1] = allPass(1);
  s[2] = leakTwice(leakTwice(allPass(2)));
  s[3] = allPass(3);
  s[4] = allPass(4);
  const Stereo128 out = mul15(stage(4), Stereo128::both(kWet)) + mul15(Stereo128::both(kFullScale - kWet), x);
  out.storeSaturated(left, right);
}

const RunInLanes<Q60393Phaser> Q60393Phaser::runBaseline = runPhaser<cofu::registers::Registers128>;

bool Q60393Phaser::isSilent(unsigned) const {
  return std::all_of(stages.begin(), stages.end(), [](StereoWords stage) { return stage.isZero(); });
}

void Q60393Phaser::skip(const Settings&, unsigned count) {
  phase = Stereo128(phase) + Stereo128::both(cofu::core::wrapMul(lfoStep, static_cast<std::int32_t>(count)));
}

template class TwoKnobEffect<Q60393Phaser>;

}  // namespace tesh::bramel::plugin::sivray::effects
