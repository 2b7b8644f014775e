// The triangle that the integer modulation effects read off a wrapping 32-bit phase.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Lead of the right channel's phase over the left one's: 17.5 degrees of a cycle of 2^32.
inline constexpr std::int32_t kRightPhaseLead = 208732160;

/// |phase| as a number that also holds 2^31.
constexpr std::uint32_t phaseMagnitude(std::int32_t phase) {
  return static_cast<std::uint32_t>(cofu::core::wrapAbs(phase));
}

/// |phase| >> 16: 0 to 32767, and 32768 at the phase of half a cycle exactly.
constexpr std::int32_t triangle(std::int32_t phase) { return static_cast<std::int32_t>(phaseMagnitude(phase) >> 16); }

}  // namespace tesh::bramel::plugin::sivray::effects
