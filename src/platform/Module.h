// The library or program that this code is linked into.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::platform {

/// Keeps the library in memory until the process ends, even if its host unloads it. For code that may still run on a
/// thread that cannot be joined. Any thread.
void keepModuleLoaded();

#ifdef _WIN32
/// The handle (HINSTANCE) of this library or program, which need not be the process's.
void* moduleHandle();
#endif

}  // namespace tesh::bramel::platform
