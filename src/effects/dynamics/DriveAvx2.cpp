// The run of the drive for AVX2, where limits and magnitudes take a step each.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "core/VectorCode.h"
#include "effects/dynamics/Q60393Drive.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/dynamics/DriveStep.h"
#include "effects/interfaces/SerialRun.h"

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

unsigned Q60393Drive::runAvx2(Q60393Drive& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runSerially(law, left, right, count, [](Q60393Drive& now, std::int16_t& l, std::int16_t& r) {
    stepDrive<DriveArithmeticAvx2>(now, l, r);
  });
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
