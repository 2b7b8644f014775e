// Builds the instrument below the shell: the engine, its macros, the description and the user's programs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string_view>

#include "macro/PluginMacroControllable.h"

namespace tesh::bramel::vst {

inline constexpr std::string_view kInstrumentName = "Sivray";

/// A complete processor: the generator is active and the first program waits for the first block. Reads its files where
/// the paths put them; sample data and user programs may be missing. Throws std::runtime_error with the JSON library's
/// text when the description is missing or wrong. On the thread that loads the plug-in.
std::unique_ptr<vimo::PluginMacroControllable<vimo::Generator<float>>> makeProcessor();

}  // namespace tesh::bramel::vst
