// The output stage: from the mixed buses to the engine's float output. Each step is given as a function of one sample
// and as one over a block, the latter with a kernel per instruction set. All give identical samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "core/FixedPoint.h"
#include "core/RealTime.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray {

/// From the engine's 16-bit scale to floats: 1 / 32768.
inline constexpr float kFloatScale = 3.0517578e-5F;

/// A master gain of 1.0.
inline constexpr std::int32_t kUnityGain = 16384;

/// Start of the soft knee, -7.5 dB of full scale. Above it, the cube of the excess is subtracted.
inline constexpr std::int32_t kOutputKnee = 13848;

/// The make-up gain less 1.0, Q15: 0.238, which brings full scale back to full scale after the knee.
inline constexpr std::int32_t kOutputMakeUp = 7808;

/// The sum of the dry and the effect bus, limited to -32767 .. 32767.
constexpr std::int32_t sumBuses(std::int32_t dry, std::int32_t wet) { return cofu::core::saturate(dry + wet); }

/// Master gain (Q14, 0 to 32767), limiter, soft knee and make-up gain. Full scale at a gain of 1.0 gives 32766.
constexpr std::int32_t shapeOutput(std::int32_t sample, std::int32_t gain) {
  using namespace cofu::core;
  const std::int32_t x = saturate(mulShift<14>(gain, sample));
  const std::int32_t k = std::max((x < 0 ? -x : x) - kOutputKnee, 0);
  const std::int32_t y = mul15(mul15(k, k), k);
  const std::int32_t bent = x > 0 ? x - y : x + y;
  return bent + mul15(bent, kOutputMakeUp);
}

/// The whole stage for one sample of both buses.
constexpr float outputSample(std::int32_t dry, std::int32_t wet, std::int32_t gain) {
  return static_cast<float>(shapeOutput(sumBuses(dry, wet), gain)) * kFloatScale;
}

/// Two channels of the effect bus, at most 2048 samples each. Null pointers mean silence.
struct BusSamples {
  std::int16_t* left = nullptr;
  std::int16_t* right = nullptr;

  BusSamples from(int frame) const { return left == nullptr ? BusSamples{} : BusSamples{left + frame, right + frame}; }
};

/// The two output channels of a block.
struct OutputChannels {
  float* left = nullptr;
  float* right = nullptr;
};

/// Splits `frames` interleaved frames into two channels.
void splitChannels(const std::int16_t* words, BusSamples channels, int frames) SIVRAY_NONBLOCKING;

/// The whole stage for `frames` frames at a constant gain of 0 to 32767. `dry` holds left and right interleaved and
/// never -32768.
using RenderOutput = void(const std::int16_t* dry, BusSamples wet, OutputChannels out, int frames,
                          std::int32_t gain) SIVRAY_NONBLOCKING;

RenderOutput renderOutputBaseline;
RenderOutput renderOutputAvx2;

struct OutputKernel {
  const char* name;
  platform::VectorSet needs;  ///< What the processor must have.
  RenderOutput* render;
};

/// Every compiled kernel, the slowest first, including those that this processor cannot run.
std::span<const OutputKernel> outputKernels();

/// The fastest kernel that this processor can run.
const OutputKernel& bestOutputKernel();

}  // namespace tesh::bramel::plugin::sivray
