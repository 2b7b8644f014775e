// Preset files (.fxp) with the state of a VST 2 plug-in, in the form that hosts exchange: a head of big-endian numbers,
// a name, and the bytes that a host saves in its song.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sivray::render {

/// Returns whether the path ends with ".fxp", in capitals or not.
bool isPresetPath(std::string_view path);

/// Returns the preset of this plug-in for a `state`. `parameters` is how many of them hosts see. Of a name longer than
/// 27 bytes the file keeps the first characters that fit.
std::vector<std::uint8_t> packPreset(std::string_view name, std::size_t parameters,
                                     std::span<const std::uint8_t> state);

/// Returns the state in a preset file. Throws RenderError, which names `path`, if the bytes are no preset, are cut
/// short, or belong to another plug-in.
std::vector<std::uint8_t> stateInPreset(std::span<const std::uint8_t> bytes, const std::string& path);

/// Returns a file name for the program `name`: characters that some system forbids in names become "-".
std::string presetFileName(std::string_view name);

}  // namespace sivray::render
