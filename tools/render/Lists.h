// The output of --list-programs, --list-effects, --list-waves and --list-parameters.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Options.h"
#include "PluginModel.h"

namespace sivray::render {

/// Prints the lists that `options` asks for on standard output, one line for each entry.
void printLists(const Options& options, const PluginModel& model);

}  // namespace sivray::render
