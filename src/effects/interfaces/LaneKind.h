// Which vector instructions the laws use that can run many samples at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The ways to compute a law, which give the same bits. SampleLanes.h describes the lanes.
enum class LaneKind : std::uint8_t {
  plain,     ///< Sample by sample.
  baseline,  ///< In registers that every processor has: mostly eight samples at a time.
  avx2       ///< With AVX2: mostly sixteen samples at a time.
};

/// Samples that the longest lanes compute at once. Feedback must be at least that old.
inline constexpr int kMostLanes = 16;

/// The fastest kind that this processor has, within the limit of platform::VectorLimit. Any thread.
inline LaneKind bestLaneKind() {
  using platform::VectorSet;
  if (platform::supports(VectorSet::avx2)) {
    return LaneKind::avx2;
  }
  return platform::supports(VectorSet::baseline) ? LaneKind::baseline : LaneKind::plain;
}

}  // namespace tesh::bramel::plugin::sivray::effects
