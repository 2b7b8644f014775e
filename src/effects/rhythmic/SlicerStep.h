// The gate of the slicer, sample by sample or in lanes. LaneRun.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/BeatGainStep.h"
#include "effects/rhythmic/Slicer.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Where the gain goes at a phase, Q15: the sum of two saws that run against each other. It is close to 1.0 while the
/// gate is open and close to 0 while it is shut.
template <typename Words>
Words openingAt(const Slicer& law, Words up) {
  const Words down = Words::all(Slicer::kPhaseTop) - up;
  const Words later = Words::all(law.now.holdOffset) + up;
  const Words sum = down.template shiftedRight<16>() + later.template shiftedRight<16>() - Words::all(law.now.edge);
  return sum.template shiftedRight<1>();
}

}  // namespace tesh::bramel::plugin::sivray::effects
