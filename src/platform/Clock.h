// The system's clock that only goes forward.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::platform {

inline constexpr std::int64_t kNanosecondsPerTick = 100;

/// Nanoseconds from a start that stays the same while the process runs. Any thread.
std::int64_t monotonicNanoseconds();

/// The same in ticks of 100 nanoseconds.
inline std::int64_t monotonicTicks() { return monotonicNanoseconds() / kNanosecondsPerTick; }

}  // namespace tesh::bramel::platform
