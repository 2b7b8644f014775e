// The renderer's main function: from the arguments to the exit status.
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

/// Draws the panel of an instrument with the given state. Throws std::invalid_argument for an option with a wrong
/// value.
using PanelProgram = std::function<void(const Options&, std::span<const std::uint8_t> state)>;

/// Runs the renderer. `check` implements --check and `drawPanel` implements --panel. Returns 0 on success, 1 if a check
/// failed, 2 for a wrong command line, and 1 after any other failure; the last two print one line on standard error. A
/// signal that ends it leaves no file.
int runProgram(const std::vector<std::string>& arguments, const CheckProgram& check,
               const PanelProgram& drawPanel = {});

}  // namespace sivray::render
