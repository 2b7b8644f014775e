// The inner loop of the resampler: each output frame is four dot products, of two neighbouring phases with the history
// of two channels. There is a kernel per instruction set, and all give the same bits, because the order of the sums is
// fixed: lane l of four adds the taps l, l + 4, l + 8 and so on, oldest first, and the result is (lane 0 + lane 1) +
// (lane 2 + lane 3).
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "core/RealTime.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::vst {

/// Four taps of a phase, oldest frame first, and the same four of the next phase. Each tap stands twice, for left and
/// right.
struct alignas(32) TapGroup {
  std::array<float, 8> phase{};
  std::array<float, 8> next{};
};

/// How far the read position moves per output frame. A unit is a Q14 phase, 1 / 16384 of a phase.
struct ResampleStep {
  std::uint32_t unitsPerInput = 0;  ///< Units from one input frame to the next; 0 before the first design.
  std::uint32_t inputs = 0;         ///< Whole input frames.
  std::uint32_t units = 0;          ///< And units, below unitsPerInput.
  float fraction = 0.0F;            ///< And a part of a unit, below 1.
};

/// Where the next output frame lies in the input.
struct ResamplePosition {
  std::size_t input = 0;     ///< Whole input frames from the start of the run.
  std::uint32_t within = 0;  ///< Units past that input frame, below unitsPerInput.
  float fraction = 0.0F;     ///< Sum of the steps' fractions, below 1.

  /// Moves on by one output frame.
  void advance(const ResampleStep& step) {
    fraction += step.fraction;
    const bool carry = fraction >= 1.0F;
    fraction -= carry ? 1.0F : 0.0F;
    within += step.units + (carry ? 1U : 0U);
    input += step.inputs;
    const bool isPast = within >= step.unitsPerInput;
    within -= isPast ? step.unitsPerInput : 0U;
    input += isPast ? 1U : 0U;
  }
};

inline constexpr int kPhaseFractionBits = 14;
inline constexpr std::uint32_t kPhaseMask = (1U << kPhaseFractionBits) - 1;
inline constexpr float kPhaseScale = 1.0F / static_cast<float>(1U << kPhaseFractionBits);

/// One run over `frames` input frames of two channels, which the history holds already.
struct ResampleRun {
  const TapGroup* tables = nullptr;
  std::size_t groups = 0;  ///< Taps per phase divided by four.
  ResampleStep step;
  const float* window = nullptr;  ///< Of the first input frame: oldest frame first, left and right in turn.
  float* outLeft = nullptr;
  float* outRight = nullptr;
  std::size_t frames = 0;
};

/// Computes all output frames that lie within the run, moves `position` past them and returns their number.
using ResampleKernelRun = std::size_t (*)(const ResampleRun& run, ResamplePosition& position) SIVRAY_NONBLOCKING;

/// One instruction set.
struct ResampleKernel {
  const char* name;
  platform::VectorSet needs;  ///< What the processor must have.
  ResampleKernelRun run;
};

/// Every kernel that was built, the slowest first. The first runs on every processor.
std::span<const ResampleKernel> resampleKernels();

/// The fastest kernel that this processor can run.
const ResampleKernel& bestResampleKernel();

}  // namespace tesh::bramel::vst
