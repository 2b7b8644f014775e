// The arithmetic between the mixed buses and the floats that leave the engine.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray {

/// The engine's 16-bit scale in floats: 1/32768.
inline constexpr float kFloatScale = 3.0517578e-5F;

/// The sum of the dry and the effect bus: -32767 to 32767.
constexpr std::int32_t sumBuses(std::int32_t dry, std::int32_t wet) { return cofu::core::saturate(dry + wet); }

/// Master gain (14 fraction bits), limit, soft knee above 13848, and the make-up gain of 1.238.
constexpr std::int32_t shapeOutput(std::int32_t sample, std::int32_t gain) {
  using namespace cofu::core;
  constexpr std::int32_t kKnee = 13848;
  constexpr std::int32_t kMakeUp = 7808;
  const std::int32_t x = saturate(mulShift<14>(gain, sample));
  const std::int32_t k = std::max((x < 0 ? -x : x) - kKnee, 0);
  const std::int32_t y = mul15(mul15(k, k), k);
  const std::int32_t bent = x > 0 ? x - y : x + y;
  return bent + mul15(bent, kMakeUp);
}

/// One block, from four interleaved channels (dry left and right, effect left and right) to two floats per frame.
struct OutputBlock {
  const std::int32_t* mix;         ///< The dry pair is channels 0 and 1.
  const std::int16_t* effectLeft;  ///< The effect bus behind the effect.
  const std::int16_t* effectRight;
  float* left;
  float* right;
  int frames;
};

/// Renders a block at a gain that rests.
using OutputKernel = void (*)(const OutputBlock& block, std::int32_t gain);

/// The fastest kernel of this processor. All give the same samples.
OutputKernel bestOutputKernel();

/// The kernels themselves, for tests; null where this build or processor has none.
OutputKernel baselineOutputKernel();
OutputKernel sse41OutputKernel();
OutputKernel avx2OutputKernel();

}  // namespace tesh::bramel::plugin::sivray
