// The shape of the pump's swell, sample by sample or in lanes. LaneRun.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/dynamics/Pump.h"
#include "effects/interfaces/BeatGainStep.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Falls from 1.0 at both ends of the phase to 0 at mid-cycle, times the gain of the attack.
template <typename Words>
Words parabola(Words at, std::int32_t attackGain) {
  const Words distance = magnitude(at);
  return product<15>(product<47>(distance, distance), Words::all(attackGain));
}

/// Close to 0 in the first half of the cycle and close to 1.0 in the second: the sum of two saws that run against each
/// other.
template <typename Words>
Words secondHalf(Words up) {
  const Words down = Words::all(Pump::kPhaseStart) - up;
  const Words sum = down.template shiftedRight<16>() + Words::all(BeatGain::kOpen) + up.template shiftedRight<16>();
  return sum.template shiftedRight<1>();
}

/// Where the gain goes at a phase, Q15: along the parabola, but not above the second half.
template <typename Words>
Words openingAt(const Pump& law, Words at) {
  return smaller(parabola(at, law.now.attackGain), secondHalf(at));
}

}  // namespace tesh::bramel::plugin::sivray::effects
