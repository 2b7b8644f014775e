// The system's monotonic clock.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::platform {

inline constexpr std::int64_t kNanosecondsPerTick = 100;

/// Nanoseconds since a fixed point in the past, which is the same for the whole process. Any thread.
std::int64_t monotonicNanoseconds();

/// That time in ticks of 100 nanoseconds.
inline std::int64_t monotonicTicks() { return monotonicNanoseconds() / kNanosecondsPerTick; }

}  // namespace tesh::bramel::platform
