// Which macro moves what: one macro per value that the host and the panel reach, and behind those the values that the
// panel does not show.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "content/factory/Kit.h"

namespace sivray::factory {

using namespace tesh::bramel::panel;

/// One macro with its single set.
struct MacroRow {
  std::string name;  ///< At most 15 characters.
  std::uint32_t targetId = 0;
  float minimum = 0.0F;  ///< Ends of a linear set.
  float maximum = 1.0F;
  std::vector<float> steps;   ///< Values of a quantized set; empty for a linear one.
  float defaultValue = 0.0F;  ///< What programs without an entry take: the engine's own default.
  bool hidden = false;        ///< Hidden from the host's automation.
};

/// All macros by number. `waveCount` decides where the samples' steps lie.
std::vector<MacroRow> makeMacroLayout(std::size_t waveCount);

/// The macro values of a kit, by macro number. `waveNames` is the library in the order of its numbers. `file` names the
/// kit in errors. Throws TextError for an unknown wave or effect.
std::vector<float> macroValuesOf(const Kit& kit, const std::vector<std::string>& waveNames, const std::string& file);

}  // namespace sivray::factory
