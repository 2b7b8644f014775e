// The all-pass chain of the phaser.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/Q60393Phaser.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/StereoLanes.h"
#include "effects/modulation/LfoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using cofu::core::kFullScale;

namespace {

/// Largest depth, Q15: 0.4914.
constexpr std::int32_t kLargestDepth = 16102;

/// All-pass coefficient that the oscillator takes its depth from, Q15: 0.8926, the square of the linear curve at 120.
constexpr std::int32_t kManualRoot = cofu::core::mul15(linearTable[120], kFullScale);
constexpr std::int32_t kManual = cofu::core::mul15(kManualRoot, kManualRoot);

/// Feedback, Q15: 0.5254, the convex curve at 40 times 0.99.
constexpr std::int32_t kResonance = cofu::core::mul15(convexTable[40], 32440);

/// Wet gain, Q15: 0.5039, the linear curve at 64. The dry gain is the rest of full scale.
constexpr std::int32_t kWet = linearTable[64];

/// The coefficient needs no limit: kManual less a depth of 0 to 16101 stays within 0 .. 32767.
Stereo128 coefficientAt(Stereo128 phase, std::int32_t depth) {
  const Stereo128 triangle = magnitude(phase).shiftedRightUnsigned<16>();
  const Stereo128 held = triangle - triangle.shiftedRight<15>();
  return Stereo128::both(kManual) - mul15(Stereo128::both(depth), held);
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

bool Q60393Phaser::isSilent(unsigned) const {
  return std::all_of(stages.begin(), stages.end(), [](StereoWords stage) { return stage.isZero(); });
}

void Q60393Phaser::skip(const Settings& to, unsigned count) {
  phase = Stereo128(phase) + Stereo128::both(cofu::core::wrapMul(to.lfoStep, static_cast<std::int32_t>(count)));
}

template class TwoKnobEffect<Q60393Phaser>;

}  // namespace tesh::bramel::plugin::sivray::effects
