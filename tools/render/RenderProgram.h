// The renderer from its arguments to its exit status.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace sivray::render {

/// Does what the arguments ask for. A failure is one line on standard error and gives 2, a check that did not pass 1.
int runProgram(const std::vector<std::string>& arguments);

}  // namespace sivray::render
