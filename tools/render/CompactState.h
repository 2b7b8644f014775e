// Removes data from a state that the plug-in does not read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sivray::render {

/// Returns a state that sets the same values in less than a hundredth of the size. It lacks the macro list and the
/// factory programs, which the plug-in takes from its content, and the engine's values where the plug-in would skip
/// them. Returns bytes that are no state unchanged.
std::vector<std::uint8_t> compactState(std::span<const std::uint8_t> state);

}  // namespace sivray::render
