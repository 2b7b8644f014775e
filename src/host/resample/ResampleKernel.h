// The inner loop of the resampler: two neighbouring phase tables against a window of both channels, for each output
// frame. One entry per instruction set; all give the same bits.
//
// A dot product is summed in four lanes: lane l takes the taps l, l + 4, l + 8 and so on of the window, oldest first,
// from +0; then (lane 0 + lane 1) + (lane 2 + lane 3). SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Four taps of a phase's table, oldest frame first, and the same four of the next phase's.
struct alignas(32) TablePair {
  std::array<float, 4> phase{};
  std::array<float, 4> next{};
};

/// How far the read position moves for an output frame, in input frames and Q14 phases.
struct ResampleStep {
  std::uint32_t unitsPerInput = 0;  ///< Q14 phases of an input frame; 0 where nothing has been configured.
  std::uint32_t inputs = 0;
  std::uint32_t units = 0;  ///< Below unitsPerInput.
  float fraction = 0.0F;    ///< What is left of a Q14 phase, below 1.
};

/// Where the next output frame lies.
struct ResamplePosition {
  std::size_t input = 0;     ///< Input frames from the first that hasn't been consumed.
  std::uint32_t within = 0;  ///< Q14 phases past that input frame, below unitsPerInput.
  float fraction = 0.0F;     ///< Accumulated fractions of the step, below 1.

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

/// One run over `frames` input frames of two channels that lie in the history already.
struct ResampleRun {
  const TablePair* tables = nullptr;
  std::size_t groups = 0;  ///< Taps by four.
  ResampleStep step;
  const float* left = nullptr;  ///< The window of the first input frame, oldest frame first.
  const float* right = nullptr;
  float* outLeft = nullptr;
  float* outRight = nullptr;
  std::size_t frames = 0;
};

/// Makes all output frames that lie within the run, moves `position` past them and gives their number.
using ResampleKernelRun = std::size_t (*)(const ResampleRun& run, ResamplePosition& position) SIVRAY_NONBLOCKING;

struct ResampleKernel {
  const char* name;
  bool isSupported;
  ResampleKernelRun run;
};

/// From the plainest to the widest.
std::span<const ResampleKernel> resampleKernels();

/// The widest that this processor runs.
const ResampleKernel& bestResampleKernel();

}  // namespace tesh::bramel::vst
