// Marks around code for an instruction set that not every processor has. Such code is in separate source files. Callers
// must ask platform/CpuFeatures.h first.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Whether processors of this architecture may have these instructions. For other architectures, CMake leaves out the
/// source files and callers leave out the calls.
#if defined(__x86_64__) || defined(__i386__)
#define SIVRAY_FOR_X86 1
#else
#define SIVRAY_FOR_X86 0
#endif

/// SIVRAY_COMPILE_FOR("avx2") and SIVRAY_COMPILE_FOR_ALL enclose the code. Templates over vectors and lanes must be
/// included between them. Headers with inline functions that other source files share must be included before them,
/// because those functions must run on every processor.
#define SIVRAY_PRAGMA(text) _Pragma(#text)
#if defined(__clang__)
#define SIVRAY_COMPILE_FOR(set) SIVRAY_PRAGMA(clang attribute push(__attribute__((target(set))), apply_to = function))
#define SIVRAY_COMPILE_FOR_ALL SIVRAY_PRAGMA(clang attribute pop)
#else
#define SIVRAY_COMPILE_FOR(set) SIVRAY_PRAGMA(GCC push_options) SIVRAY_PRAGMA(GCC target(set))
#define SIVRAY_COMPILE_FOR_ALL SIVRAY_PRAGMA(GCC pop_options)
#endif
