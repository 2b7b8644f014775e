// Counts every call for memory of this program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The sanitizers bring their own operators, which cannot be replaced or must not be mixed with ours.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer) || __has_feature(address_sanitizer)
#define SIVRAY_FIXED_OPERATORS
#endif
#endif

#if !defined(SIVRAY_FIXED_OPERATORS)

/// How often memory was asked for or given back.
int memoryCalls();

#endif
