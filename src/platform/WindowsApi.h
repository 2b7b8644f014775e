// Windows' declarations, without its macros min and max.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace tesh::bramel::platform {

/// Characters of the longest path that Windows allows, including the terminating zero.
inline constexpr DWORD kLongestPath = 32768;

}  // namespace tesh::bramel::platform

#endif
