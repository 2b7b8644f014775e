// Which threads of this process run a library's code.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "check/ModuleRange.h"

namespace sivray::check {

/// The system's numbers of the threads that the module has started and that still run. Empty under a sanitizer, which
/// keeps the start of threads for itself, and where the C library is not glibc.
std::vector<int> threadsOf(const ModuleRange& module);

}  // namespace sivray::check
