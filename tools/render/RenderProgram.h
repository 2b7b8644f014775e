// The renderer from its arguments to its exit status.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Options.h"

namespace sivray::render {

/// Checks the plug-in and gives the number of checks that failed.
using CheckProgram = std::function<int(const Options&)>;

/// Does what the arguments ask for; `check` does what --check means. A failure is one line on standard error and gives
/// 2, a check that did not pass 1.
int runProgram(const std::vector<std::string>& arguments, const CheckProgram& check);

}  // namespace sivray::render
