// Eight consecutive samples of both channels in 32 bits: a register for each channel, or a register for each sample,
// for laws where a sample waits for the one before it. For AVX2; must be included between the marks of
// core/VectorCode.h.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <immintrin.h>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

inline constexpr unsigned kPairs = 8;

/// Eight 32-bit values of each channel, one a sample.
struct BothChannels {
  __m256i left;
  __m256i right;
};

/// Samples as registers with the left channel in lane 0 and the right one in lane 2. Odd lanes hold rubbish.
struct SamplePairs {
  explicit SamplePairs(const BothChannels& channels) {
    const __m256i outer = _mm256_unpacklo_epi64(channels.left, channels.right);
    const __m256i inner = _mm256_unpackhi_epi64(channels.left, channels.right);
    const __m128i twos[]{_mm256_castsi256_si128(outer), _mm256_castsi256_si128(inner),
                         _mm256_extracti128_si256(outer, 1), _mm256_extracti128_si256(inner, 1)};
    for (unsigned i = 0; i < kPairs / 2; ++i) {
      pairs[2 * i] = twos[i];
      pairs[2 * i + 1] = _mm_srli_epi64(twos[i], 32);
    }
  }

  BothChannels channels() const {
    __m128i twos[kPairs / 2];
    for (unsigned i = 0; i < kPairs / 2; ++i) {
      twos[i] = _mm_blend_epi32(pairs[2 * i], _mm_slli_epi64(pairs[2 * i + 1], 32), 0b1010);
    }
    const __m256i outer = _mm256_set_m128i(twos[2], twos[0]);
    const __m256i inner = _mm256_set_m128i(twos[3], twos[1]);
    return {_mm256_unpacklo_epi64(outer, inner), _mm256_unpackhi_epi64(outer, inner)};
  }

  __m128i pairs[kPairs];
};

/// (a * b) >> kBits, whose lower 32 bits it keeps, with a product of 64 bits.
template <int kBits>
__m256i timesShifted(__m256i a, __m256i b) {
  const __m256i even = _mm256_srli_epi64(_mm256_mul_epi32(a, b), kBits);
  const __m256i odd = _mm256_mul_epi32(_mm256_srli_epi64(a, 32), _mm256_srli_epi64(b, 32));
  return _mm256_blend_epi32(even, _mm256_slli_epi64(odd, 32 - kBits), 0b10101010);
}

/// Samples, limited to -32767 .. 32767.
inline __m128i limitedSamples(__m256i values) {
  const __m128i packed = _mm_packs_epi32(_mm256_castsi256_si128(values), _mm256_extracti128_si256(values, 1));
  return _mm_max_epi16(packed, _mm_set1_epi16(-cofu::core::kFullScale));
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
