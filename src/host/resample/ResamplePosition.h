// Where a resampler reads, and how far it moves per output frame.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace tesh::bramel::vst {

/// How far the read position moves per output frame. A unit is a Q14 phase, 1 / 16384 of a phase.
struct ResampleStep {
  std::uint32_t unitsPerInput = 0;  ///< Units from one input frame to the next; 0 before the first design.
  std::uint32_t inputs = 0;         ///< Whole input frames.
  std::uint32_t units = 0;          ///< Plus units, below unitsPerInput.
  float fraction = 0.0F;            ///< Plus a fraction of a unit, below 1.
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

}  // namespace tesh::bramel::vst
