// The lane operations of the voice kernel for SSE4.1: four lanes, with the instructions that SSE2 lacks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <smmintrin.h>

#include "engine/voice/LanesSse2.h"

namespace tesh::bramel::plugin::sivray {
namespace {

struct LanesSse41 : LanesSse2 {
  static Vec magnitude(Vec v) { return _mm_abs_epi32(v); }

  static void clip(Vec& a, Vec& b) {
    a = clipOne(a);
    b = clipOne(b);
  }

  static void framePairs(const std::int16_t* samples, Vec index, Vec& left, Vec& right) {
    alignas(16) std::int32_t at[kLanes];
    store(at, index);
    const __m128 low = sortedPairs(loadFramePair(samples, at[0]), loadFramePair(samples, at[1]));
    const __m128 high = sortedPairs(loadFramePair(samples, at[2]), loadFramePair(samples, at[3]));
    left = _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0)));
    right = _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(3, 1, 3, 1)));
  }

  static __m128i laneSums(Vec a, Vec b, Vec c, Vec d) {
    return _mm_hadd_epi32(_mm_hadd_epi32(a, b), _mm_hadd_epi32(c, d));
  }

  static __m128i product32(__m128i a, __m128i b) { return _mm_mullo_epi32(a, b); }

 private:
  static Vec clipOne(Vec v) { return _mm_min_epi32(_mm_max_epi32(v, _mm_set1_epi32(-32767)), _mm_set1_epi32(32767)); }

  /// The frames of two lanes, with each lane's pair of left samples before its pair of right ones.
  static __m128 sortedPairs(__m128i first, __m128i second) {
    const __m128i order = _mm_set_epi8(15, 14, 11, 10, 13, 12, 9, 8, 7, 6, 3, 2, 5, 4, 1, 0);
    return _mm_castsi128_ps(_mm_shuffle_epi8(_mm_unpacklo_epi64(first, second), order));
  }
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
