// The intrinsics of x86, for the headers of this room only. On other processors SIMDe translates those of 128 bits.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#else
#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/sse2.h>
#endif
