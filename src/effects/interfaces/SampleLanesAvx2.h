// The lanes of SampleLanes.h for AVX2. Must be included between the marks of core/VectorCode.h.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "effects/interfaces/SampleLanes.h"
#include "effects/interfaces/WordLanesAvx2.h"

namespace tesh::bramel::plugin::sivray::effects::lanes {
namespace {

inline __m256i limited(__m256i words) { return _mm256_max_epi16(words, _mm256_set1_epi16(-cofu::core::kFullScale)); }

/// Sixteen samples. OneSample describes the operations.
struct SamplesAvx2 {
  static constexpr unsigned kCount = 16;
  using Words = WordsAvx2;
  static constexpr unsigned kWords = kCount / Words::kCount;

  struct Gain {
    explicit Gain(std::int32_t gainQ15) : Gain(SplitGain(gainQ15)) {}
    explicit Gain(SplitGain split)
        : doubled(_mm256_set1_epi16(split.doubled)), carried(_mm256_set1_epi16(split.carried)) {}
    __m256i doubled;
    __m256i carried;
  };

  struct Weights {
    Weights(std::int32_t first, std::int32_t second) : pairs(_mm256_set1_epi32(pairOfWords(first, second))) {}
    __m256i pairs;
  };

  template <int kBits>
  struct Fraction {
    explicit Fraction(std::int32_t fraction) : Fraction(SplitFraction(fraction, kBits)) {}
    explicit Fraction(SplitFraction split) : weights(split.near, split.beyond), shift(_mm_cvtsi32_si128(split.bits)) {}
    Weights weights;
    __m128i shift;
  };

  /// The samples in the order that unpacking gives: 0 to 3 and 8 to 11, then 4 to 7 and 12 to 15.
  struct Wide {
    __m256i low;
    __m256i high;

    template <int kBits>
    Wide shiftedRight() const {
      return {_mm256_srai_epi32(low, kBits), _mm256_srai_epi32(high, kBits)};
    }
    SamplesAvx2 saturated() const { return {limited(_mm256_packs_epi32(low, high))}; }
    SamplesAvx2 packed() const { return {_mm256_packs_epi32(low, high)}; }
    SamplesAvx2 narrowed() const { return packed(); }
  };

  struct Boost {
    explicit Boost(std::int32_t gainQ15) : Boost(SplitBoost(gainQ15)) {}
    explicit Boost(SplitBoost split)
        : part(split.part), once(_mm256_set1_epi16(split.once)), twice(_mm256_set1_epi16(split.twice)) {}
    Gain part;
    __m256i once;
    __m256i twice;
  };

  __m256i v;

  static SamplesAvx2 all(std::int16_t sample) { return {_mm256_set1_epi16(sample)}; }
  static SamplesAvx2 of(const WordsAvx2* words) {
    return {_mm256_permute4x64_epi64(_mm256_packs_epi32(words[0].v, words[1].v), _MM_SHUFFLE(3, 1, 2, 0))};
  }
  static SamplesAvx2 lowerHalvesOf(const WordsAvx2* words) {
    const WordsAvx2 halves[]{{_mm256_srai_epi32(_mm256_slli_epi32(words[0].v, 16), 16)},
                             {_mm256_srai_epi32(_mm256_slli_epi32(words[1].v, 16), 16)}};
    return of(halves);
  }
  static SamplesAvx2 of(SamplesSse2 lower, SamplesSse2 upper) { return {_mm256_set_m128i(upper.v, lower.v)}; }
  SamplesSse2 lower() const { return {_mm256_castsi256_si128(v)}; }
  SamplesSse2 upper() const { return {_mm256_extracti128_si256(v, 1)}; }

  static SamplesAvx2 load(const std::int16_t* samples) {
    return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(samples))};
  }
  void store(std::int16_t* samples) const { _mm256_storeu_si256(reinterpret_cast<__m256i*>(samples), v); }
};

inline SamplesAvx2::Wide operator+(SamplesAvx2::Wide a, SamplesAvx2::Wide b) {
  return {_mm256_add_epi32(a.low, b.low), _mm256_add_epi32(a.high, b.high)};
}

inline SamplesAvx2::Wide operator-(SamplesAvx2::Wide a, SamplesAvx2::Wide b) {
  return {_mm256_sub_epi32(a.low, b.low), _mm256_sub_epi32(a.high, b.high)};
}

inline SamplesAvx2 oneLater(SamplesAvx2 a, std::int16_t& previous) {
  const __m256i lowerHalfAbove = _mm256_permute2x128_si256(a.v, a.v, 0x08);
  const __m256i later = _mm256_insert_epi16(_mm256_alignr_epi8(a.v, lowerHalfAbove, 14), previous, 0);
  previous = static_cast<std::int16_t>(_mm256_extract_epi16(a.v, 15));
  return {later};
}

inline SamplesAvx2 operator+(SamplesAvx2 a, SamplesAvx2 b) { return {_mm256_add_epi16(a.v, b.v)}; }

inline SamplesAvx2 operator-(SamplesAvx2 a, SamplesAvx2 b) { return {_mm256_sub_epi16(a.v, b.v)}; }

inline SamplesAvx2 sum(SamplesAvx2 a, SamplesAvx2 b) { return {limited(_mm256_adds_epi16(a.v, b.v))}; }

inline SamplesAvx2 difference(SamplesAvx2 a, SamplesAvx2 b) { return {limited(_mm256_subs_epi16(a.v, b.v))}; }

inline SamplesAvx2 mul15(SamplesAvx2 a, const SamplesAvx2::Gain& gain) {
  return {_mm256_add_epi16(_mm256_mulhi_epi16(a.v, gain.doubled), _mm256_mullo_epi16(a.v, gain.carried))};
}

inline SamplesAvx2 mul15(SamplesAvx2 a, SamplesAvx2 gain) {
  const __m256i upper = _mm256_mulhi_epi16(a.v, gain.v);
  return {_mm256_or_si256(_mm256_add_epi16(upper, upper), _mm256_srli_epi16(_mm256_mullo_epi16(a.v, gain.v), 15))};
}

inline SamplesAvx2 leak(SamplesAvx2 a) { return {_mm256_sub_epi16(_mm256_srai_epi16(a.v, 14), a.v)}; }

inline SamplesAvx2::Wide weightedSum(SamplesAvx2 a, SamplesAvx2 b, const SamplesAvx2::Weights& weights) {
  return {_mm256_madd_epi16(_mm256_unpacklo_epi16(a.v, b.v), weights.pairs),
          _mm256_madd_epi16(_mm256_unpackhi_epi16(a.v, b.v), weights.pairs)};
}

inline SamplesAvx2::Wide weightedSum(SamplesAvx2 a, SamplesAvx2 b, SamplesAvx2 ofA, SamplesAvx2 ofB) {
  return {_mm256_madd_epi16(_mm256_unpacklo_epi16(a.v, b.v), _mm256_unpacklo_epi16(ofA.v, ofB.v)),
          _mm256_madd_epi16(_mm256_unpackhi_epi16(a.v, b.v), _mm256_unpackhi_epi16(ofA.v, ofB.v))};
}

inline SamplesAvx2 boosted(SamplesAvx2 a, const SamplesAvx2::Boost& boost) {
  const __m256i single = _mm256_adds_epi16(mul15(a, boost.part).v, _mm256_and_si256(a.v, boost.once));
  return {limited(_mm256_adds_epi16(single, _mm256_and_si256(_mm256_adds_epi16(a.v, a.v), boost.twice)))};
}

template <int kBits>
inline SamplesAvx2 between(SamplesAvx2 near, SamplesAvx2 beyond, const SamplesAvx2::Fraction<kBits>& place) {
  const SamplesAvx2::Wide both = weightedSum(near, beyond, place.weights);
  return {_mm256_packs_epi32(_mm256_sra_epi32(both.low, place.shift), _mm256_sra_epi32(both.high, place.shift))};
}

inline SamplesAvx2 nearerZeroWhereEqual(SamplesAvx2 a, SamplesAvx2 b) {
  return {_mm256_add_epi16(a.v, _mm256_sign_epi16(_mm256_cmpeq_epi16(a.v, b.v), a.v))};
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects::lanes

namespace tesh::bramel::plugin::sivray::effects {
using lanes::SamplesAvx2;
}  // namespace tesh::bramel::plugin::sivray::effects
