// What the integer modulation effects share of their triangle, which they read off a wrapping 32-bit phase.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// Lead of the right channel's phase over the left one's: 17.5 degrees of a cycle of 2^32.
inline constexpr std::int32_t kRightPhaseLead = 208732160;

}  // namespace tesh::bramel::plugin::sivray::effects
