// Four numbers side by side, for loops over as many frames or modes at once. Each lane computes what a number alone
// does, so that samples have the same bits with any register width.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstring>

namespace sivray::content {

inline constexpr std::size_t kLanes = 4;

/// Functions take and give them by reference: without AVX, GCC warns of those that do by value.
using Doubles = double __attribute__((vector_size(kLanes * sizeof(double))));

inline void load(Doubles& to, const double* from) { std::memcpy(&to, from, sizeof to); }

inline void store(double* to, const Doubles& from) { std::memcpy(to, &from, sizeof from); }

inline void addTo(double* samples, const Doubles& more) {
  Doubles sum;
  load(sum, samples);
  sum += more;
  store(samples, sum);
}

// Before a function: compiles it, and what it calls in the same file, a second time for processors with AVX2, which
// have registers for all four lanes.
#if defined(__linux__) && defined(__x86_64__) && !defined(__clang__)
#define SIVRAY_ALSO_FOR_AVX2 [[gnu::target_clones("avx2", "default"), gnu::flatten]]
#else
#define SIVRAY_ALSO_FOR_AVX2
#endif

}  // namespace sivray::content
