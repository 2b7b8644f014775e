// The operating system's monotonic clock.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::platform {

inline constexpr std::int64_t kNanosecondsPerTick = 100;

/// Nanoseconds since a fixed moment before the process started. Any thread.
std::int64_t monotonicNanoseconds();

/// The same clock in ticks of 100 nanoseconds. Any thread.
inline std::int64_t monotonicTicks() { return monotonicNanoseconds() / kNanosecondsPerTick; }

}  // namespace tesh::bramel::platform
