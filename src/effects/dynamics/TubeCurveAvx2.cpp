// The curve of the tube stage for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstring>

#include "effects/dynamics/TubeCurve.h"

// Code between these marks is compiled for AVX2. Inline functions that other files share must stay outside, as they
// have to run on every processor.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif

#include "effects/dynamics/TubeLanes.h"

namespace tesh::bramel::plugin::fxkit {

void throughTubeAvx2(float* samples, const float* drives, const float* mixes, unsigned count) {
  throughTubes(samples, drives, mixes, count);
}

}  // namespace tesh::bramel::plugin::fxkit

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
