// How much a test does in a build with a sanitizer, and on an emulated processor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace support {

/// Whether a sanitizer is built in, so that each step takes several times as long.
#if defined(SIVRAY_SANITIZED)
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif

/// Whether an emulated processor runs the tests.
#if defined(SIVRAY_EMULATED)
inline constexpr bool kIsEmulated = true;
#else
inline constexpr bool kIsEmulated = false;
#endif

/// Returns how many of `count` random scenes are played: all, or a quarter, at least one. A sanitizer watches what the
/// scenes run; that their sums are right the other builds show. On an emulated processor each operation is tested
/// apart.
template <typename Count>
constexpr Count scenes(Count count) {
  return kIsSanitized || kIsEmulated ? (count + 3) / 4 : count;
}

}  // namespace support
