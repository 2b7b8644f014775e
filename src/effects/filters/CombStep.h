// The law of the comb filter: the echo that comes next, and the sound that it joins. One sample has the sound first and
// the echo behind it. Eight samples at once have their echoes first, one after the other, as each waits for the one
// before it, and then all sounds: a delay of at least eight samples reads nothing of what they write. SampleLanes.h
// tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/filters/CombFilter.h"
#include "effects/interfaces/OneSample.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The echo after `echo`: an all-pass interpolation between two samples of the line, of which the nearer one comes
/// without its fraction. The correction has the scale of samples and the sound that of the line: it moves the sound a
/// little.
template <typename Words>
Words nextEcho(Words echo, Words nearWhole, Words older, Words eta) {
  const Words correction = mul15(nearWhole - echo.template shiftedRight<15>(), eta);
  return limited(correction + older, CombFilter::kOutputLimit);
}

/// What enters the line and is heard; `in` is raised to the line's scale.
template <typename Words>
Words combSound(Words echo, Words feedback, Words in) {
  return signedProduct<31>(echo, feedback) + in;
}

}  // namespace tesh::bramel::plugin::sivray::effects
