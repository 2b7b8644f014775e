// The inner loop of the resampler: each output frame takes four dot products, of two neighbouring phases with the
// history of two channels. There is one kernel per instruction set. All give the same bits, because the order of the
// sums is fixed: lane l of four adds the taps l, l + 4, l + 8 and so on, oldest first, and the result is (lane 0 + lane
// 1) + (lane 2 + lane 3).
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "core/RealTime.h"
#include "host/resample/StepRun.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::vst {

/// Four taps of a phase, oldest frame first, and the same four of the next phase. Each tap is stored twice, for left
/// and right.
struct alignas(32) TapGroup {
  std::array<float, 8> phase{};
  std::array<float, 8> next{};
};

/// The distance between two phases' tables, in groups: a power of two, so that a phase's place follows from the
/// position's bits by a shift.
constexpr std::size_t groupsApart(std::size_t groups) { return std::bit_ceil(groups); }

/// One run over `frames` input frames of two channels, which are already in the history.
struct ResampleRun {
  const TapGroup* tables = nullptr;  ///< One per phase, groupsApart(groups) apart.
  std::size_t groups = 0;            ///< Taps per phase divided by four.
  const StepRun* steps = nullptr;
  const float* window = nullptr;  ///< Of the first input frame: oldest frame first, left and right interleaved.
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
