// The law of the comb filter: the next echo, and its sum with the input. The sample-by-sample form computes the sum
// first and then the echo. The form for eight samples computes their echoes first, one after the other, because each
// depends on the one before, and then all sums: a delay of at least eight samples reads none of the samples that they
// write. SampleLanes.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/filters/CombFilter.h"
#include "effects/interfaces/OneSample.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The echo after `echo`: an all-pass interpolation between two samples of the line, of which the nearer one is used
/// without its fraction. The correction is scaled like samples and the sound like the line, so the correction is small.
template <typename Words>
Words nextEcho(Words echo, Words nearWhole, Words older, Words eta) {
  const Words correction = mul15(nearWhole - echo.template shiftedRight<15>(), eta);
  return limited(correction + older, CombFilter::kOutputLimit);
}

/// The sum that is written to the line and output; `in` is shifted to the line's scale.
template <typename Words>
Words combSound(Words echo, Words feedback, Words in) {
  return signedProduct<31>(echo, feedback) + in;
}

}  // namespace tesh::bramel::plugin::sivray::effects
