// The shape of the pump over its attack, both tables from the slowest attack to the fastest.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// Gain on the parabola of the pump, 15 fractional bits.
extern const std::array<std::int32_t, 128> pumpAttackTable;

/// Make-up level that goes with it, 15 fractional bits.
extern const std::array<std::int32_t, 128> pumpLevelTable;

}  // namespace tesh::bramel::plugin::sivray::effects
