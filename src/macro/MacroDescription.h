// The description of an instrument: one JSON text that names the files of its macros, programs, maps and start state.
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

/// Where the files of a description come from.
struct DescriptionSource {
  /// A file that the description names; nothing when it cannot be opened.
  std::function<std::optional<std::vector<std::uint8_t>>(const std::string& name)> file;
  std::string ccMapPath;          ///< The active controller map: the user's own, or the factory's.
  std::string factoryCcMapPath;   ///< Taken if the active map cannot be read.
  std::string nativeModeMapPath;  ///< The factory's map of hardware controls.
};

/// The files of `directory`, with the maps of the instrument `name` where the paths put them.
DescriptionSource filesOf(const std::string& directory, const std::string& name);

/// Reads a whole description: the engine's start state, the macro chunk, what hangs on the macro list where `parts`
/// asks for it, the run flags and further factory programs. A file that is not there is passed over. Throws
/// std::runtime_error with the JSON library's text where a value is not of the type that it must have; what was read
/// until then stays; only a broken controller map of the user's gives way to the factory's. On the thread that loads
/// the plug-in, before audio runs.
void loadDescription(std::span<const std::uint8_t> text, const DescriptionSource& source,
                     PluginMacroControllable<Generator<float>>& processor,
                     MacroController<Generator<float>>::ChunkParts parts);

/// Gives macros the defaults that a parameter description lists.
void readParameterDescription(std::span<const std::uint8_t> text, MacroController<Generator<float>>& controller);

}  // namespace tesh::vimo
