// The library or program that this code was linked into.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::platform {

/// Keeps the library in memory until the process ends, even if its host unloads it: for code that still runs on a
/// thread which nobody may wait for.
void keepModuleLoaded();

}  // namespace tesh::bramel::platform
