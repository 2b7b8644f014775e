// Identifies the threads of this process that run a library's code.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "check/ModuleRange.h"

namespace sivray::check {

/// The system's numbers of the running threads that the module has started. Empty under a sanitizer, which replaces the
/// start of threads itself, and if the C library is not glibc.
std::vector<int> threadsOf(const ModuleRange& module);

}  // namespace sivray::check
