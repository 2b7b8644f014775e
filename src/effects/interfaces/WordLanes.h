// Consecutive values of an oscillator in the 32-bit lanes of a vector register: phases, and what a law computes from
// them before it turns to samples. Each form of SampleLanes.h has its counterpart here, and all give the same results:
// OneWord, WordsSse2 and WordsAvx2 (in WordLanesAvx2.h).
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <emmintrin.h>

#include <algorithm>
#include <cstdint>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects::lanes {

/// The plain form. The comments here hold for the other forms too.
struct OneWord {
  static constexpr unsigned kCount = 1;

  std::int32_t v;

  static OneWord all(std::int32_t value) { return {value}; }

  /// The next phases after `phase`: phase + step, phase + 2 * step ...
  static OneWord after(std::int32_t phase, std::int32_t step) { return {cofu::core::wrapAdd(phase, step)}; }

  static OneWord load(const std::int32_t* words) { return {*words}; }
  void store(std::int32_t* words) const { *words = v; }

  template <int kBits>
  OneWord shiftedRight() const {
    return {v >> kBits};
  }
  /// Shifts in zeros.
  template <int kBits>
  OneWord shiftedRightUnsigned() const {
    return {static_cast<std::int32_t>(static_cast<std::uint32_t>(v) >> kBits)};
  }
};

inline OneWord operator+(OneWord a, OneWord b) { return {cofu::core::wrapAdd(a.v, b.v)}; }
inline OneWord operator-(OneWord a, OneWord b) { return {cofu::core::wrapSub(a.v, b.v)}; }

/// |a|, which stays -2^31 for -2^31.
inline OneWord magnitude(OneWord a) { return {cofu::core::wrapAbs(a.v)}; }

inline bool isAnyNegative(OneWord a) { return a.v < 0; }

inline OneWord smaller(OneWord a, OneWord b) { return {std::min(a.v, b.v)}; }

/// (a * b) >> kBits with a product of 64 bits, both without a sign. The result must fit 32 bits.
template <int kBits>
OneWord product(OneWord a, OneWord b) {
  const std::uint64_t whole = std::uint64_t{static_cast<std::uint32_t>(a.v)} * static_cast<std::uint32_t>(b.v);
  return {static_cast<std::int32_t>(whole >> kBits)};
}

/// a * factor, both -32768 .. 32767.
inline OneWord timesShort(OneWord a, std::int16_t factor) { return {a.v * factor}; }

/// Four words.
struct WordsSse2 {
  static constexpr unsigned kCount = 4;

  __m128i v;

  static WordsSse2 all(std::int32_t value) { return {_mm_set1_epi32(value)}; }
  static WordsSse2 after(std::int32_t phase, std::int32_t step) {
    using cofu::core::wrapMul;
    const __m128i steps = _mm_setr_epi32(step, wrapMul(step, 2), wrapMul(step, 3), wrapMul(step, 4));
    return {_mm_add_epi32(_mm_set1_epi32(phase), steps)};
  }
  static WordsSse2 load(const std::int32_t* words) {
    return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(words))};
  }
  void store(std::int32_t* words) const { _mm_storeu_si128(reinterpret_cast<__m128i*>(words), v); }

  template <int kBits>
  WordsSse2 shiftedRight() const {
    return {_mm_srai_epi32(v, kBits)};
  }
  template <int kBits>
  WordsSse2 shiftedRightUnsigned() const {
    return {_mm_srli_epi32(v, kBits)};
  }
};

inline WordsSse2 operator+(WordsSse2 a, WordsSse2 b) { return {_mm_add_epi32(a.v, b.v)}; }
inline WordsSse2 operator-(WordsSse2 a, WordsSse2 b) { return {_mm_sub_epi32(a.v, b.v)}; }

inline WordsSse2 magnitude(WordsSse2 a) {
  const __m128i sign = _mm_srai_epi32(a.v, 31);
  return {_mm_sub_epi32(_mm_xor_si128(a.v, sign), sign)};
}

inline bool isAnyNegative(WordsSse2 a) { return _mm_movemask_ps(_mm_castsi128_ps(a.v)) != 0; }

inline WordsSse2 smaller(WordsSse2 a, WordsSse2 b) {
  const __m128i isGreater = _mm_cmpgt_epi32(a.v, b.v);
  return {_mm_or_si128(_mm_and_si128(isGreater, b.v), _mm_andnot_si128(isGreater, a.v))};
}

template <int kBits>
WordsSse2 product(WordsSse2 a, WordsSse2 b) {
  const __m128i even = _mm_srli_epi64(_mm_mul_epu32(a.v, b.v), kBits);
  const __m128i odd = _mm_srli_epi64(_mm_mul_epu32(_mm_srli_epi64(a.v, 32), _mm_srli_epi64(b.v, 32)), kBits);
  return {_mm_or_si128(even, _mm_slli_epi64(odd, 32))};
}

inline WordsSse2 timesShort(WordsSse2 a, std::int16_t factor) {
  return {_mm_madd_epi16(a.v, _mm_set1_epi32(static_cast<std::uint16_t>(factor)))};
}

}  // namespace tesh::bramel::plugin::sivray::effects::lanes
