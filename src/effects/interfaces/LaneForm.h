// Which vector instructions the laws use that can run many samples at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray::effects {

/// How a law is computed. Every form returns the same bits; SampleLanes.h describes the forms.
enum class LaneForm : std::uint8_t {
  plain,  ///< Sample by sample.
  sse2,   ///< Eight samples at a time; every 64-bit processor has it.
  avx2    ///< Sixteen samples at a time.
};

/// Samples that the longest form computes at once. Feedback must be at least that old.
inline constexpr int kMostLanes = 16;

/// The fastest form that this processor has. Any thread.
inline LaneForm bestLaneForm() {
  return platform::supports(platform::VectorSet::avx2) ? LaneForm::avx2 : LaneForm::sse2;
}

}  // namespace tesh::bramel::plugin::sivray::effects
