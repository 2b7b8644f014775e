// Windows' own declarations, without the macros that would take the names min and max from everybody.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#endif
