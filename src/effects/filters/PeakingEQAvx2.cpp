// The peaking equalizer with both channels in one register, for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstdint>

#include "core/FixedPoint.h"
#include "core/VectorCode.h"
#include "effects/filters/PeakingEQ.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/ChannelPairsAvx2.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

__m256i raised(const std::int16_t* samples) {
  const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(samples));
  return _mm256_slli_epi32(_mm256_cvtepi16_epi32(words), PeakingEQ::kInputShift);
}

/// A coefficient, which fits 32 bits.
__m128i factor(std::int64_t coefficient) { return _mm_set1_epi64x(coefficient); }

}  // namespace

[[gnu::flatten]] unsigned PeakingEQ::runAvx2(PeakingEQ& law, std::int16_t* leftSamples, std::int16_t* rightSamples,
                                             unsigned count) {
  const __m128i b0 = factor(law.now.b0);
  const __m128i b1 = factor(law.now.b1);
  const __m128i b2 = factor(law.now.b2);
  const __m128i a2 = factor(law.now.a2);
  __m128i x1 = _mm_set_epi64x(law.right.x1, law.left.x1);
  __m128i x2 = _mm_set_epi64x(law.right.x2, law.left.x2);
  __m128i y1 = _mm_set_epi64x(law.right.y1, law.left.y1);
  __m128i y2 = _mm_set_epi64x(law.right.y2, law.left.y2);
  unsigned done = 0;
  for (; done + kPairs <= count; done += kPairs) {
    SamplePairs pairs({raised(leftSamples + done), raised(rightSamples + done)});
    for (__m128i& pair : pairs.pairs) {
      const __m128i fed = _mm_add_epi64(_mm_add_epi64(_mm_mul_epi32(pair, b0), _mm_mul_epi32(x1, b1)),
                                        _mm_sub_epi64(_mm_mul_epi32(x2, b2), _mm_mul_epi32(y2, a2)));
      // In this order, so that only one product waits for the last sample.
      const __m128i sum = _mm_sub_epi64(fed, _mm_mul_epi32(y1, b1));
      x2 = x1;
      x1 = pair;
      y2 = y1;
      y1 = _mm_srli_epi64(sum, kFractionBits);
      // The sample is the sum shifted by 33 bits, one more than here.
      pair = _mm_srli_epi64(sum, 32);
    }
    const BothChannels out = pairs.channels();
    const auto store = [](std::int16_t* samples, __m256i twice) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(samples), limitedSamples(_mm256_srai_epi32(twice, 1)));
    };
    store(leftSamples + done, out.left);
    store(rightSamples + done, out.right);
  }
  law.left = {_mm_cvtsi128_si32(x1), _mm_cvtsi128_si32(x2), _mm_cvtsi128_si32(y1), _mm_cvtsi128_si32(y2)};
  law.right = {_mm_extract_epi32(x1, 2), _mm_extract_epi32(x2, 2), _mm_extract_epi32(y1, 2), _mm_extract_epi32(y2, 2)};
  return done;
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
