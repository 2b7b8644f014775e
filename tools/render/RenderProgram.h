// The renderer from its arguments to its exit status.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "Options.h"

namespace sivray::render {

/// Checks the plug-in and gives the number of checks that failed.
using CheckProgram = std::function<int(const Options&)>;

/// Draws the panel of an instrument with the given state.
using PanelProgram = std::function<void(const Options&, std::span<const std::uint8_t> state)>;

/// Does what the arguments ask for; `check` does what --check means and `drawPanel` what --panel does. A failure is one
/// line on standard error and gives 2, a check that did not pass 1.
int runProgram(const std::vector<std::string>& arguments, const CheckProgram& check,
               const PanelProgram& drawPanel = {});

}  // namespace sivray::render
