// The lane operations of the voice kernel for AVX2: eight lanes, which are both quads. See LanesSse2 for what each
// does.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "engine/voice/LanesSse41.h"

namespace tesh::bramel::plugin::sivray {
namespace {

struct LanesAvx2 {
  using Vec = __m256i;
  static constexpr int kLanes = 8;

  static Vec load(const std::int32_t* lanes) { return _mm256_load_si256(reinterpret_cast<const __m256i*>(lanes)); }
  static void store(std::int32_t* lanes, Vec v) { _mm256_store_si256(reinterpret_cast<__m256i*>(lanes), v); }
  static Vec all(std::int32_t lane) { return _mm256_set1_epi32(lane); }
  static Vec allWords(std::int16_t word) { return _mm256_set1_epi16(word); }

  static Vec add(Vec a, Vec b) { return _mm256_add_epi32(a, b); }
  static Vec sub(Vec a, Vec b) { return _mm256_sub_epi32(a, b); }
  static Vec bitAnd(Vec a, Vec b) { return _mm256_and_si256(a, b); }
  static Vec bitOr(Vec a, Vec b) { return _mm256_or_si256(a, b); }
  static Vec andNot(Vec mask, Vec v) { return _mm256_andnot_si256(mask, v); }
  template <int Bits>
  static Vec shiftLeft(Vec v) {
    return _mm256_slli_epi32(v, Bits);
  }
  template <int Bits>
  static Vec shiftRight(Vec v) {
    return _mm256_srai_epi32(v, Bits);
  }
  static bool anyLess(Vec a, Vec b, Vec mask) { return _mm256_testz_si256(_mm256_cmpgt_epi32(b, a), mask) == 0; }
  static Vec wordProducts(Vec a, Vec b) { return _mm256_madd_epi16(a, b); }
  static Vec splitWords(Vec a, Vec b) { return _mm256_packs_epi32(a, b); }
  static Vec highWords(Vec a, Vec b) { return _mm256_blend_epi16(_mm256_srli_epi32(a, 16), b, 0b10101010); }

  static Vec addWords(Vec a, Vec b) { return _mm256_add_epi16(a, b); }
  static Vec addLimited(Vec a, Vec b) { return _mm256_adds_epi16(a, b); }
  static Vec maxOfWords(Vec a, Vec b) { return _mm256_max_epi16(a, b); }
  static Vec highProducts(Vec a, Vec b) { return _mm256_mulhi_epi16(a, b); }
  static Vec magnitudes(Vec v) { return _mm256_abs_epi16(v); }
  template <int Bits>
  static Vec shiftWordsRight(Vec v) {
    return _mm256_srai_epi16(v, Bits);
  }
  template <int Bits>
  static Vec shiftUnsignedWordsRight(Vec v) {
    return _mm256_srli_epi16(v, Bits);
  }

  static Vec interleaved(Vec split) {
    const __m128i order = _mm_set_epi8(15, 14, 7, 6, 13, 12, 5, 4, 11, 10, 3, 2, 9, 8, 1, 0);
    return _mm256_shuffle_epi8(split, _mm256_broadcastsi128_si256(order));
  }
  static Vec leftLanes(Vec split) { return _mm256_unpacklo_epi16(split, _mm256_setzero_si256()); }
  static Vec rightLanes(Vec split) { return _mm256_unpackhi_epi16(split, _mm256_setzero_si256()); }

  static void framePairs(const std::int16_t* samples, Vec index, Vec& left, Vec& right) {
    alignas(32) std::int32_t at[kLanes];
    store(at, index);
    asm("" : "+m"(at));  // Without it the compiler takes the indices out of the vector by slow shuffles.
    // The shuffles work in each half alone, so the first vector takes lanes 0 1 4 5 and the second 2 3 6 7.
    const __m256 low = sortedPairs(samples, at[0], at[1], at[4], at[5]);
    const __m256 high = sortedPairs(samples, at[2], at[3], at[6], at[7]);
    left = _mm256_castps_si256(_mm256_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0)));
    right = _mm256_castps_si256(_mm256_shuffle_ps(low, high, _MM_SHUFFLE(3, 1, 3, 1)));
  }

  static __m128i channelSums(Vec a, Vec b) {
    const Vec sums = _mm256_hadd_epi32(a, b);
    return _mm_add_epi32(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
  }

  static __m128i limited(__m128i sums) { return LanesSse41::limited(sums); }

 private:
  /// The frame pairs at four indices, with each lane's pair of left samples before its pair of right ones. Loads that
  /// fill a vector and are then blended are faster than gathers, and spare the one unit that moves data across lanes.
  static __m256 sortedPairs(const std::int16_t* samples, std::int32_t a, std::int32_t b, std::int32_t c,
                            std::int32_t d) {
    const Vec order = _mm256_broadcastsi128_si256(_mm_set_epi8(15, 14, 11, 10, 13, 12, 9, 8, 7, 6, 3, 2, 5, 4, 1, 0));
    const Vec first = _mm256_blend_epi32(filledPair(samples, a), filledPair(samples, b), 0b00001100);
    const Vec second = _mm256_blend_epi32(filledPair(samples, c), filledPair(samples, d), 0b11000000);
    return _mm256_castsi256_ps(_mm256_shuffle_epi8(_mm256_blend_epi32(first, second, 0b11110000), order));
  }

  /// The frame at `index` and the frame after it, in all four places.
  static Vec filledPair(const std::int16_t* samples, std::int32_t index) {
    return _mm256_broadcastq_epi64(loadFramePair(samples, index));
  }
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
