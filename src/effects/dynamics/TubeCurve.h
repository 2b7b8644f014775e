// The curve of the tube stage, as a template over the lanes of Exponential.h. Every step is single precision but for
// the exponential itself. A source file for an instruction set includes this between the marks of core/VectorCode.h.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/dynamics/Exponential.h"

namespace tesh::bramel::plugin::fxkit {

/// What the input is multiplied by at a drive of 1.0.
inline constexpr float kTubeInputScale = 12.0F;

/// How fast the curve nears its height: it has come within 0.25 % of it at an input of 1.0.
inline constexpr float kTubeSteepness = 6.0F;

/// The two halves of the wave saturate at slightly different heights.
inline constexpr float kTubeUpperHeight = 0.755F;
inline constexpr float kTubeLowerHeight = 0.765F;

template <typename Lanes>
typename Lanes::Floats tube(typename Lanes::Floats in, typename Lanes::Floats drive, typename Lanes::Floats mix) {
  using Floats = typename Lanes::Floats;
  constexpr std::int32_t kAllButSign = 0x7FFFFFFF;
  const Floats x = drive * in * kTubeInputScale;
  const Floats magnitude = Lanes::template as<Floats>(Lanes::template as<typename Lanes::Words>(x) & kAllButSign);
  const Floats rise = 1.0F - exponentialOfNegative<Lanes>(-kTubeSteepness * magnitude);
  const Floats y = x >= 0.0F ? rise * kTubeUpperHeight : -rise * kTubeLowerHeight;
  const Floats mixed = (1.0F - mix) * in + mix * y;
  const Floats top = Floats{} + 1.0F;
  const Floats notBelow = mixed < -top ? -top : mixed;
  return notBelow > top ? top : notBelow;
}

}  // namespace tesh::bramel::plugin::fxkit
