// How much a test does in a build with a sanitizer.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace support {

/// Whether a sanitizer is built in, so that each step takes several times as long.
#if defined(SIVRAY_SANITIZED)
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif

/// Returns how many of `count` random scenes are played: all, or under a sanitizer a quarter, at least one. It watches
/// what the scenes run; that their sums are right the other builds show.
template <typename Count>
constexpr Count scenes(Count count) {
  return kIsSanitized ? (count + 3) / 4 : count;
}

}  // namespace support
