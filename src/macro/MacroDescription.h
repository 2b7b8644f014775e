// The description of an instrument: a JSON text that names the files of its macros, programs, maps and start state.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "macro/MacroController.h"
#include "macro/PluginMacroControllable.h"

namespace tesh::vimo {

/// Access to the files that a description names.
struct DescriptionSource {
  /// Returns a file that the description names, or nothing if it cannot be opened.
  std::function<std::optional<std::vector<std::uint8_t>>(const std::string& name)> file;
  std::string ccMapPath;          ///< The active controller map: the user's own, or the factory's.
  std::string factoryCcMapPath;   ///< Used if the active map cannot be read.
  std::string nativeModeMapPath;  ///< The factory's map of hardware controls.
};

/// The files of `directory`, with the maps of the instrument `name` from the places that storage/paths gives.
DescriptionSource filesOf(const std::string& directory, const std::string& name);

/// Reads a description in this order: the engine's start state, the macro chunk, the members that refer to macros (with
/// ChunkParts::all only), the run flags, further factory programs. Skips missing files. Throws std::runtime_error with
/// the JSON library's text if a value has the wrong type; everything read before stays. A broken controller map of the
/// user does not throw: the factory's map is used instead. On the thread that loads the plug-in, before audio runs.
void loadDescription(std::span<const std::uint8_t> text, const DescriptionSource& source,
                     PluginMacroControllable<Generator<float>>& processor,
                     MacroController<Generator<float>>::ChunkParts parts);

/// Sets the macros' defaults from a parameter description.
void readParameterDescription(std::span<const std::uint8_t> text, MacroController<Generator<float>>& controller);

}  // namespace tesh::vimo
