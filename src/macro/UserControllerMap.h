// Changes the user's own controller map. If it exists, all forms of the instrument read it instead of the factory's.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tesh::vimo {

/// Macros by MIDI controller, 0 to 126, or by MacroControllerBase::kPitchBendKey.
using ControllerMap = std::map<std::uint8_t, std::uint64_t>;

/// The active map of the instrument `name`: the user's, or the factory's if that is missing or broken; empty if both
/// are.
ControllerMap activeControllerMap(std::string_view name);

/// Writes the active map with one change as the user's: `controller` moves `macro`, or nothing. Other members of the
/// file are preserved. False if the file cannot be written, or if the controller may not move anything. Any thread but
/// the audio thread.
bool changeUserController(std::string_view name, std::uint8_t controller, std::optional<std::uint64_t> macro);

}  // namespace tesh::vimo
