// The lanes of WordLanes.h for AVX2. Must be included between the marks of core/VectorCode.h.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "effects/interfaces/WordLanes.h"

namespace tesh::bramel::plugin::sivray::effects::lanes {
namespace {

/// Eight words. OneWord describes the operations.
struct WordsAvx2 {
  static constexpr unsigned kCount = 8;

  __m256i v;

  static WordsAvx2 all(std::int32_t value) { return {_mm256_set1_epi32(value)}; }
  static WordsAvx2 after(std::int32_t phase, std::int32_t step) {
    const __m256i steps = _mm256_mullo_epi32(_mm256_set1_epi32(step), _mm256_setr_epi32(1, 2, 3, 4, 5, 6, 7, 8));
    return {_mm256_add_epi32(_mm256_set1_epi32(phase), steps)};
  }
  static WordsAvx2 load(const std::int32_t* words) {
    return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(words))};
  }
  void store(std::int32_t* words) const { _mm256_storeu_si256(reinterpret_cast<__m256i*>(words), v); }

  template <int kBits>
  WordsAvx2 shiftedRight() const {
    return {_mm256_srai_epi32(v, kBits)};
  }
  template <int kBits>
  WordsAvx2 shiftedRightUnsigned() const {
    return {_mm256_srli_epi32(v, kBits)};
  }
};

inline WordsAvx2 operator+(WordsAvx2 a, WordsAvx2 b) { return {_mm256_add_epi32(a.v, b.v)}; }
inline WordsAvx2 operator-(WordsAvx2 a, WordsAvx2 b) { return {_mm256_sub_epi32(a.v, b.v)}; }
inline WordsAvx2 magnitude(WordsAvx2 a) { return {_mm256_abs_epi32(a.v)}; }
inline bool isAnyNegative(WordsAvx2 a) { return _mm256_movemask_ps(_mm256_castsi256_ps(a.v)) != 0; }
inline WordsAvx2 smaller(WordsAvx2 a, WordsAvx2 b) { return {_mm256_min_epi32(a.v, b.v)}; }

template <int kBits>
WordsAvx2 product(WordsAvx2 a, WordsAvx2 b) {
  const __m256i even = _mm256_srli_epi64(_mm256_mul_epu32(a.v, b.v), kBits);
  const __m256i odd =
      _mm256_srli_epi64(_mm256_mul_epu32(_mm256_srli_epi64(a.v, 32), _mm256_srli_epi64(b.v, 32)), kBits);
  return {_mm256_or_si256(even, _mm256_slli_epi64(odd, 32))};
}

inline WordsAvx2 timesShort(WordsAvx2 a, std::int16_t factor) {
  return {_mm256_madd_epi16(a.v, _mm256_set1_epi32(static_cast<std::uint16_t>(factor)))};
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects::lanes
