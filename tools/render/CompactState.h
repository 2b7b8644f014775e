// A state without what a plug-in does not read from it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sivray::render {

/// Returns a state that sets the same values as `state`, at less than a hundredth of its size: without the macro list
/// and the factory programs, which the plug-in has from its content, and without the engine's values, if it would skip
/// them. Bytes that are no state come back unchanged.
std::vector<std::uint8_t> compactState(std::span<const std::uint8_t> state);

}  // namespace sivray::render
