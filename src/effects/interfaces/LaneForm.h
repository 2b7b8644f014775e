// Which vector instructions the laws use that can run many samples at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray::effects {

/// How a law is computed. Every form returns the same bits; SampleLanes.h describes the forms.
enum class LaneForm : std::uint8_t {
  plain,     ///< Sample by sample.
  baseline,  ///< In registers that every processor has: mostly eight samples at a time.
  avx2       ///< With AVX2: mostly sixteen samples at a time.
};

/// Samples that the longest form computes at once. Feedback must be at least that old.
inline constexpr int kMostLanes = 16;

/// The fastest form that this processor has, within the limit of platform::VectorLimit. Any thread.
inline LaneForm bestLaneForm() {
  using platform::VectorSet;
  if (platform::supports(VectorSet::avx2)) {
    return LaneForm::avx2;
  }
  return platform::supports(VectorSet::baseline) ? LaneForm::baseline : LaneForm::plain;
}

}  // namespace tesh::bramel::plugin::sivray::effects
