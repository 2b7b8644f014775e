// The run of the drive for AVX2, where limits and magnitudes take a step each.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "effects/dynamics/Q60393Drive.h"

// Code between these marks is compiled for AVX2. Inline functions that other files share must stay outside, as they
// have to run on every processor.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif

#include "effects/dynamics/DriveStep.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

struct DriveArithmeticAvx2 {
  static StereoLanes saturated(StereoLanes value) {
    const __m128i top = _mm_set1_epi32(cofu::core::kFullScale);
    return {_mm_max_epi32(_mm_min_epi32(value.v, top), _mm_sub_epi32(__m128i{}, top))};
  }
  static StereoLanes above(StereoLanes z, StereoLanes threshold) {
    return {_mm_max_epi32(_mm_sub_epi32(_mm_abs_epi32(z.v), threshold.v), __m128i{})};
  }
};

}  // namespace

[[gnu::flatten]] unsigned Q60393Drive::runAvx2(Q60393Drive& law, std::int16_t* left, std::int16_t* right,
                                               unsigned count) {
  Q60393Drive now = law;
  for (unsigned i = 0; i < count; ++i) {
    stepDrive<DriveArithmeticAvx2>(now, left[i], right[i]);
  }
  law = now;
  return count;
}

}  // namespace tesh::bramel::plugin::sivray::effects

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
