// The lane operations of the voice kernel for SSE2, which every 64-bit processor has: four lanes of 32 bits.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace tesh::bramel::plugin::sivray {
namespace {

/// The eight bytes of frame `index` and the frame after it.
inline __m128i loadFramePair(const std::int16_t* samples, std::int32_t index) {
  return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(samples + static_cast<std::ptrdiff_t>(index) * 2));
}

struct LanesSse2 {
  using Vec = __m128i;
  static constexpr int kLanes = 4;

  static Vec load(const std::int32_t* lanes) { return _mm_load_si128(reinterpret_cast<const __m128i*>(lanes)); }
  static void store(std::int32_t* lanes, Vec v) { _mm_store_si128(reinterpret_cast<__m128i*>(lanes), v); }
  static Vec all(std::int32_t word) { return _mm_set1_epi32(word); }
  static Vec add(Vec a, Vec b) { return _mm_add_epi32(a, b); }
  static Vec sub(Vec a, Vec b) { return _mm_sub_epi32(a, b); }
  static Vec bitAnd(Vec a, Vec b) { return _mm_and_si128(a, b); }
  static Vec bitOr(Vec a, Vec b) { return _mm_or_si128(a, b); }
  static Vec andNot(Vec mask, Vec v) { return _mm_andnot_si128(mask, v); }
  template <int Bits>
  static Vec shiftLeft(Vec v) {
    return _mm_slli_epi32(v, Bits);
  }
  template <int Bits>
  static Vec shiftRight(Vec v) {
    return _mm_srai_epi32(v, Bits);
  }

  /// Per lane: the product of the low words plus the product of the high words, all signed.
  static Vec wordProducts(Vec a, Vec b) { return _mm_madd_epi16(a, b); }

  /// Per lane the greater of two values that fit 16 bits. The high words hold either the sign or 0 in both.
  static Vec maxOfWords(Vec a, Vec b) { return _mm_max_epi16(a, b); }

  static Vec magnitude(Vec v) {
    const Vec sign = _mm_srai_epi32(v, 31);
    return _mm_sub_epi32(_mm_xor_si128(v, sign), sign);
  }

  /// Limits both to -32767 .. 32767.
  static void clip(Vec& a, Vec& b) {
    const Vec words = _mm_max_epi16(_mm_packs_epi32(a, b), _mm_set1_epi16(-32767));
    a = _mm_srai_epi32(_mm_unpacklo_epi16(words, words), 16);
    b = _mm_srai_epi32(_mm_unpackhi_epi16(words, words), 16);
  }

  static bool anyLess(Vec a, Vec b, Vec mask) {
    return _mm_movemask_epi8(_mm_and_si128(_mm_cmplt_epi32(a, b), mask)) != 0;
  }

  /// For each lane, the frame at its `index` and the next frame, as pairs of words: a pair of left samples, the first
  /// in the low word, and a pair of right ones.
  static void framePairs(const std::int16_t* samples, Vec index, Vec& left, Vec& right) {
    alignas(16) std::int32_t at[kLanes];
    store(at, index);
    const __m128 low =
        _mm_castsi128_ps(_mm_unpacklo_epi64(loadFramePair(samples, at[0]), loadFramePair(samples, at[1])));
    const __m128 high =
        _mm_castsi128_ps(_mm_unpacklo_epi64(loadFramePair(samples, at[2]), loadFramePair(samples, at[3])));
    const Vec first = _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0)));
    const Vec second = _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(3, 1, 3, 1)));
    const Vec lowWords = _mm_set1_epi32(0xFFFF);
    left = _mm_or_si128(_mm_and_si128(first, lowWords), _mm_slli_epi32(second, 16));
    right = _mm_or_si128(_mm_srli_epi32(first, 16), _mm_andnot_si128(lowWords, second));
  }

  /// Four lanes: the sum over all lanes of a, of b, of c and of d.
  static __m128i laneSums(Vec a, Vec b, Vec c, Vec d) {
    const Vec ab = _mm_add_epi32(_mm_unpacklo_epi32(a, b), _mm_unpackhi_epi32(a, b));
    const Vec cd = _mm_add_epi32(_mm_unpacklo_epi32(c, d), _mm_unpackhi_epi32(c, d));
    return _mm_add_epi32(_mm_unpacklo_epi64(ab, cd), _mm_unpackhi_epi64(ab, cd));
  }

  /// The low 32 bits of the products.
  static __m128i product32(__m128i a, __m128i b) {
    const __m128i even = _mm_mul_epu32(a, b);
    const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
    return _mm_unpacklo_epi32(_mm_shuffle_epi32(even, _MM_SHUFFLE(0, 0, 2, 0)),
                              _mm_shuffle_epi32(odd, _MM_SHUFFLE(0, 0, 2, 0)));
  }
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
