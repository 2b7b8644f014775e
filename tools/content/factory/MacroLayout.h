// The factory's macro list: one macro for each value that the host and the panel reach, then one for each value that
// the panel does not show.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "content/factory/Kit.h"

namespace sivray::factory {

using namespace tesh::bramel::panel;

/// One macro and its set. A macro of the factory moves one engine parameter.
struct MacroRow {
  std::string name;  ///< At most 15 characters.
  std::uint32_t targetId = 0;
  float minimum = 0.0F;  ///< Ends of a linear set.
  float maximum = 1.0F;
  std::vector<float> steps;   ///< Values of a quantized set, 0 to 1; empty for a linear set.
  float defaultValue = 0.0F;  ///< Value in programs without an entry: the engine's own default.
  bool hidden = false;        ///< Hidden from the host's automation.
};

/// Returns all macros by number. `waveCount`, the number of waves in the library, sets the steps of the sample macros.
std::vector<MacroRow> makeMacroLayout(std::size_t waveCount);

/// Returns a kit's macro values, 0 to 1, by macro number. `waveNames` lists the library's waves in the order of their
/// numbers. `file` is the name that errors show. Throws TextError for an unknown wave or effect.
std::vector<float> macroValuesOf(const Kit& kit, const std::vector<std::string>& waveNames, const std::string& file);

}  // namespace sivray::factory
