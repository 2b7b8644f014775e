// The arithmetic between the mixed buses and the floats that leave the engine: one law for a sample, and the same law
// over a block.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"
#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

/// The engine's 16-bit scale in floats: 1/32768.
inline constexpr float kFloatScale = 3.0517578e-5F;

/// The knee above which the output bends, and the make-up gain of 1.238 (15 fraction bits, less 1).
inline constexpr std::int32_t kOutputKnee = 13848;
inline constexpr std::int32_t kOutputMakeUp = 7808;

/// The sum of the dry and the effect bus: -32767 to 32767.
constexpr std::int32_t sumBuses(std::int32_t dry, std::int32_t wet) { return cofu::core::saturate(dry + wet); }

/// Master gain (14 fraction bits, 0 to 32767), limit, soft knee and make-up gain. Full scale at unity gives 32766.
constexpr std::int32_t shapeOutput(std::int32_t sample, std::int32_t gain) {
  using namespace cofu::core;
  const std::int32_t x = saturate(mulShift<14>(gain, sample));
  const std::int32_t k = std::max((x < 0 ? -x : x) - kOutputKnee, 0);
  const std::int32_t y = mul15(mul15(k, k), k);
  const std::int32_t bent = x > 0 ? x - y : x + y;
  return bent + mul15(bent, kOutputMakeUp);
}

/// The law from both buses to the float that leaves the engine.
constexpr float outputSample(std::int32_t dry, std::int32_t wet, std::int32_t gain) {
  return static_cast<float>(shapeOutput(sumBuses(dry, wet), gain)) * kFloatScale;
}

/// Two channels of one bus, at most 2048 samples each.
struct BusSamples {
  std::int16_t* left = nullptr;
  std::int16_t* right = nullptr;
};

/// Takes four interleaved channels (dry left and right, effect left and right) apart. What does not fit 16 bits is
/// limited to them. `mix` is 16-byte aligned.
void splitBuses(const std::int32_t* mix, BusSamples dry, BusSamples wet, int frames) SIVRAY_NONBLOCKING;

/// What splitBuses gives for silence.
void clearBuses(BusSamples dry, BusSamples wet, int frames) SIVRAY_NONBLOCKING;

/// One channel of `frames` samples from both buses to floats, at a gain that rests.
void renderOutput(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames,
                  std::int32_t gain) SIVRAY_NONBLOCKING;

}  // namespace tesh::bramel::plugin::sivray
