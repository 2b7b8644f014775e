// Builds the instrument: the engine, its macros, the description and the user's programs, and the shell around them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string_view>

#include "macro/PluginMacroControllable.h"

namespace tesh::bramel::vst {

class BramelInstrument;

inline constexpr std::string_view kInstrumentName = "Sivray";

/// Builds a complete processor: the generator is active, and the first block selects the first program. Files are read
/// from the places that storage/paths gives; sample data and user programs may be missing. Throws std::runtime_error
/// with the JSON library's text if the description is missing or broken. On the thread that loads the plug-in.
std::unique_ptr<vimo::PluginMacroControllable<vimo::Generator<float>>> makeProcessor();

/// Builds the whole instrument, with the texts of its values, for a host of any form. Throws as makeProcessor does.
std::shared_ptr<BramelInstrument> makeInstrument();

}  // namespace tesh::bramel::vst
