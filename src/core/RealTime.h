// The mark of operations that run on the audio thread. Compilers that know it check that they never allocate, wait or
// call what may; the RealtimeSanitizer build watches them while they run.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__clang__) && defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::nonblocking)
#define SIVRAY_NONBLOCKING [[clang::nonblocking]]
#endif
#endif

#ifndef SIVRAY_NONBLOCKING
/// Stands behind the parameter list: void process(...) SIVRAY_NONBLOCKING;
#define SIVRAY_NONBLOCKING
#endif
