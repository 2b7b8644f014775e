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

/// Checks the plug-in and returns the number of checks that failed.
using CheckProgram = std::function<int(const Options&)>;

/// Draws the panel of an instrument with the given state.
using PanelProgram = std::function<void(const Options&, std::span<const std::uint8_t> state)>;

/// Runs the renderer. `check` implements --check and `drawPanel` implements --panel. Returns 0; 1 when a check did not
/// pass; 2 after a failure, with one line on standard error.
int runProgram(const std::vector<std::string>& arguments, const CheckProgram& check,
               const PanelProgram& drawPanel = {});

}  // namespace sivray::render
