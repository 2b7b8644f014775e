// The vector instructions of this processor, by the compiler's names for those of x86. For the headers of this room
// only. Other processors translate the 128-bit ones.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#else
#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/sse2.h>
#endif
