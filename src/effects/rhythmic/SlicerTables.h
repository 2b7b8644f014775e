// How much the slicer makes up for the time during which its gate is shut.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// Make-up level by Hold Time; 32767 is 1.0, and the last is four times as much.
extern const std::array<std::int32_t, 128> slicerLevelTable;

}  // namespace tesh::bramel::plugin::sivray::effects
