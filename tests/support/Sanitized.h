// Reduces the work of a test in sanitizer builds and on an emulated processor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace support {

/// Whether this is a sanitizer build, in which each step takes several times as long.
#if defined(SIVRAY_SANITIZED)
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif

/// Whether the tests run on an emulated processor.
#if defined(SIVRAY_EMULATED)
inline constexpr bool kIsEmulated = true;
#else
inline constexpr bool kIsEmulated = false;
#endif

/// Returns the number of random scenes to play out of `count`: all, or a quarter but at least one. In sanitizer builds
/// the scenes only have to reach the code, since other builds compare the results. On an emulated processor each
/// operation is tested separately.
template <typename Count>
constexpr Count scenes(Count count) {
  return kIsSanitized || kIsEmulated ? (count + 3) / 4 : count;
}

}  // namespace support
