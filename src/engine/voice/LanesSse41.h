// The lane operations of the voice kernel for SSE4.1: four lanes, with the instructions that SSE2 lacks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <smmintrin.h>

#include "engine/voice/LanesSse2.h"

namespace tesh::bramel::plugin::sivray {
namespace {

struct LanesSse41 : LanesSse2 {
  static Vec highWords(Vec a, Vec b) { return _mm_blend_epi16(_mm_srli_epi32(a, 16), b, 0b10101010); }
  static Vec magnitudes(Vec v) { return _mm_abs_epi16(v); }

  static Vec interleaved(Vec split) {
    return _mm_shuffle_epi8(split, _mm_set_epi8(15, 14, 7, 6, 13, 12, 5, 4, 11, 10, 3, 2, 9, 8, 1, 0));
  }

  static void framePairs(const std::int16_t* samples, Vec index, Vec& left, Vec& right) {
    alignas(16) std::int32_t at[kLanes];
    store(at, index);
    evenAndOdd(sortedPairs(loadFramePair(samples, at[0]), loadFramePair(samples, at[1])),
               sortedPairs(loadFramePair(samples, at[2]), loadFramePair(samples, at[3])), left, right);
  }

  static __m128i channelSums(Vec a, Vec b) { return _mm_hadd_epi32(a, b); }

  static __m128i limited(__m128i sums) {
    return _mm_min_epi32(_mm_max_epi32(sums, _mm_set1_epi32(-32767)), _mm_set1_epi32(32767));
  }

  static __m128i product32(__m128i a, __m128i b) { return _mm_mullo_epi32(a, b); }

 private:
  static __m128i sortedPairs(__m128i first, __m128i second) {
    const __m128i order = _mm_set_epi8(15, 14, 11, 10, 13, 12, 9, 8, 7, 6, 3, 2, 5, 4, 1, 0);
    return _mm_shuffle_epi8(_mm_unpacklo_epi64(first, second), order);
  }
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
