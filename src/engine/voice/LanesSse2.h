// The lane operations of the voice kernel for SSE2, which every 64-bit processor has: four lanes of 32 bits, or the
// left and right samples of four voices as eight words of 16 bits.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace tesh::bramel::plugin::sivray {
namespace {

/// The eight bytes of frame `index`, which must not be negative, and the frame after it.
inline __m128i loadFramePair(const std::int16_t* samples, std::int32_t index) {
  const std::size_t frame = static_cast<std::uint32_t>(index);  // unsigned, so that no instruction extends the sign
  return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(samples + frame * 2));
}

/// Words come in two orders. Interleaved: each lane's left sample and then its right one. Split: in each group of four
/// lanes, all left samples before all right ones.
struct LanesSse2 {
  using Vec = __m128i;
  static constexpr int kLanes = 4;

  static Vec load(const std::int32_t* lanes) { return _mm_load_si128(reinterpret_cast<const __m128i*>(lanes)); }
  static void store(std::int32_t* lanes, Vec v) { _mm_store_si128(reinterpret_cast<__m128i*>(lanes), v); }
  static Vec all(std::int32_t lane) { return _mm_set1_epi32(lane); }
  static Vec allWords(std::int16_t word) { return _mm_set1_epi16(word); }

  // On lanes.
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
  static bool anyLess(Vec a, Vec b, Vec mask) {
    return _mm_movemask_epi8(_mm_and_si128(_mm_cmplt_epi32(a, b), mask)) != 0;
  }

  /// Per lane: the product of the low words plus the product of the high words, all signed.
  static Vec wordProducts(Vec a, Vec b) { return _mm_madd_epi16(a, b); }

  /// The low words of `a` and `b`, which must fit 16 bits or are limited to them, in the split order.
  static Vec splitWords(Vec a, Vec b) { return _mm_packs_epi32(a, b); }

  /// The high words of `a` and `b`, interleaved.
  static Vec highWords(Vec a, Vec b) {
    return _mm_or_si128(_mm_srli_epi32(a, 16), _mm_andnot_si128(_mm_set1_epi32(0xFFFF), b));
  }

  // On words.
  static Vec addWords(Vec a, Vec b) { return _mm_add_epi16(a, b); }
  static Vec addLimited(Vec a, Vec b) { return _mm_adds_epi16(a, b); }
  static Vec maxOfWords(Vec a, Vec b) { return _mm_max_epi16(a, b); }
  static Vec highProducts(Vec a, Vec b) { return _mm_mulhi_epi16(a, b); }  ///< (a * b) >> 16
  static Vec magnitudes(Vec v) { return _mm_max_epi16(v, _mm_sub_epi16(_mm_setzero_si128(), v)); }
  template <int Bits>
  static Vec shiftWordsRight(Vec v) {
    return _mm_srai_epi16(v, Bits);
  }
  template <int Bits>
  static Vec shiftUnsignedWordsRight(Vec v) {
    return _mm_srli_epi16(v, Bits);
  }

  /// From the split order to the interleaved one.
  static Vec interleaved(Vec split) { return _mm_unpacklo_epi16(split, _mm_unpackhi_epi64(split, split)); }

  /// The left and right words of the split order as lanes. The words must not be negative.
  static Vec leftLanes(Vec split) { return _mm_unpacklo_epi16(split, _mm_setzero_si128()); }
  static Vec rightLanes(Vec split) { return _mm_unpackhi_epi16(split, _mm_setzero_si128()); }

  /// For each lane, the frame at its `index` and the next frame, as pairs of words: a pair of left samples, the first
  /// in the low word, and a pair of right ones.
  static void framePairs(const std::int16_t* samples, Vec index, Vec& left, Vec& right) {
    alignas(16) std::int32_t at[kLanes];
    store(at, index);
    evenAndOdd(sortedPairs(loadFramePair(samples, at[0]), loadFramePair(samples, at[1])),
               sortedPairs(loadFramePair(samples, at[2]), loadFramePair(samples, at[3])), left, right);
  }

  /// From sums of neighbouring words in the split order: the sums of all left and all right words of a, then of b.
  static __m128i channelSums(Vec a, Vec b) {
    Vec even;
    Vec odd;
    evenAndOdd(a, b, even, odd);
    return _mm_add_epi32(even, odd);
  }

  /// Limits four sums to -32767 .. 32767.
  static __m128i limited(__m128i sums) {
    const __m128i words = _mm_max_epi16(_mm_packs_epi32(sums, sums), _mm_set1_epi16(-32767));
    return _mm_srai_epi32(_mm_unpacklo_epi16(words, words), 16);
  }

  /// The low 32 bits of the products.
  static __m128i product32(__m128i a, __m128i b) {
    const __m128i even = _mm_mul_epu32(a, b);
    const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
    return _mm_unpacklo_epi32(_mm_shuffle_epi32(even, _MM_SHUFFLE(0, 0, 2, 0)),
                              _mm_shuffle_epi32(odd, _MM_SHUFFLE(0, 0, 2, 0)));
  }

 protected:
  /// Splits the lanes of `low` and `high` into those with an even number and those with an odd one.
  static void evenAndOdd(__m128i low, __m128i high, Vec& even, Vec& odd) {
    const __m128 first = _mm_castsi128_ps(low);
    const __m128 second = _mm_castsi128_ps(high);
    even = _mm_castps_si128(_mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0)));
    odd = _mm_castps_si128(_mm_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 3, 1)));
  }

 private:
  static __m128i sortedPairs(__m128i first, __m128i second) {
    const __m128i low = _mm_shufflelo_epi16(_mm_unpacklo_epi64(first, second), _MM_SHUFFLE(3, 1, 2, 0));
    return _mm_shufflehi_epi16(low, _MM_SHUFFLE(3, 1, 2, 0));
  }
};

/// Four lanes of which only the first is used, for one voice alone.
template <typename Four>
struct FirstLane : Four {
  using Vec = typename Four::Vec;

  static void framePairs(const std::int16_t* samples, Vec index, Vec& left, Vec& right) {
    left = _mm_shufflelo_epi16(loadFramePair(samples, _mm_cvtsi128_si32(index)), _MM_SHUFFLE(3, 1, 2, 0));
    right = _mm_srli_epi64(left, 32);
  }
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
