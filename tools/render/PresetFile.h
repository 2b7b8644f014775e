// Preset files (.fxp) of a VST 2 plug-in, as hosts exchange them: a header of big-endian numbers, a name, and the
// state's bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sivray::render {

/// Returns whether the path ends with ".fxp", in any case.
bool isPresetPath(std::string_view path);

/// Returns a preset of this plug-in with a `state`. `parameters` is the number of parameters that hosts see. If the
/// name is longer than 27 bytes, it is cut at a whole character.
std::vector<std::uint8_t> packPreset(std::string_view name, std::size_t parameters,
                                     std::span<const std::uint8_t> state);

/// Returns the state in a preset file. Throws RenderError, which names `path`, if the bytes are no preset, are
/// truncated, or belong to another plug-in.
std::vector<std::uint8_t> stateInPreset(std::span<const std::uint8_t> bytes, const std::string& path);

/// Returns a file name for the program `name`. Characters that some systems forbid in file names become "-".
std::string presetFileName(std::string_view name);

}  // namespace sivray::render
