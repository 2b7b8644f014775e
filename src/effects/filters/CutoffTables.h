// The cutoff of the state-variable filter by knob value: a semitone a step for most of the way, then flatter.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// 31 fractional bits, rising.
extern const std::array<std::int32_t, 128> cutoffTable;

}  // namespace tesh::bramel::plugin::sivray::effects
