// Changes of the user's own controller map. Where it exists, all forms of the instrument read it in the factory map's
// place.
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

/// The map in force for the instrument `name`: the user's, or the factory's where that is missing or broken; empty if
/// both are.
ControllerMap activeControllerMap(std::string_view name);

/// Writes the map in force, with one line changed, as the user's: `controller` moves `macro`, or nothing from now on.
/// What else the file holds stays. False if the file cannot be written, or for a controller that can move nothing.
/// Any thread but the audio thread.
bool changeUserController(std::string_view name, std::uint8_t controller, std::optional<std::uint64_t> macro);

}  // namespace tesh::vimo
