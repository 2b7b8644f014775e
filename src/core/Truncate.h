// A conversion from float to integer that is defined for every value.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <limits>

namespace tesh::cofu::core {

/// Truncates towards zero. A value outside 32 bits gives the nearer end of the range; NaN gives 0.
constexpr std::int32_t truncateToInt(float value) {
  constexpr float kEnd = 2147483648.0F;  // 2^31, the first float past the range.
  if (value >= kEnd) {
    return std::numeric_limits<std::int32_t>::max();
  }
  if (value < -kEnd) {
    return std::numeric_limits<std::int32_t>::min();
  }
  return value == value ? static_cast<std::int32_t>(value) : 0;  // Only NaN differs from itself.
}

}  // namespace tesh::cofu::core
