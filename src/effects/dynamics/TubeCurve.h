// The curve of the tube stage. Every step is single precision but for the exponential itself.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>

#include "core/RealTime.h"
#include "effects/dynamics/Exponential.h"

namespace tesh::bramel::plugin::fxkit {

/// What the input is multiplied by at a drive of 1.0.
inline constexpr float kTubeInputScale = 12.0F;

/// How fast the curve nears its height: it has come within 0.25 % of it at an input of 1.0.
inline constexpr float kTubeSteepness = 6.0F;

/// The two halves of the wave saturate at slightly different heights.
inline constexpr float kTubeUpperHeight = 0.755F;
inline constexpr float kTubeLowerHeight = 0.765F;

inline float tube(float in, float drive, float mix) {
  const float x = drive * in * kTubeInputScale;
  const float rise = 1.0F - exponentialOfNegative(-kTubeSteepness * std::fabs(x));
  const float y = x >= 0.0F ? rise * kTubeUpperHeight : -rise * kTubeLowerHeight;
  const float mixed = (1.0F - mix) * in + mix * y;
  const float notBelow = mixed < -1.0F ? -1.0F : mixed;
  return notBelow > 1.0F ? 1.0F : notBelow;
}

/// Samples through the tube, in place, each with its own drive and mix, for AVX2. `count` is a multiple of 4. Gives the
/// bits of `tube`. There is no such form for SSE2: two exponentials at once take as long as two in turn.
void throughTubeAvx2(float* samples, const float* drives, const float* mixes, unsigned count) SIVRAY_NONBLOCKING;

}  // namespace tesh::bramel::plugin::fxkit
