// The per-sample law of the grain shifter: two lines that are read, refilled and mixed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tesh::bramel::plugin::sivray::effects {

/// Where a sample is read and written in both lines.
struct GrainPlace {
  unsigned near;  ///< Read index of the younger sample of a pair.
  unsigned far;   ///< Of the older one.
  unsigned write;
};

/// The plain form, for any machine. All gains are Q15, 0 to 32767.
class PlainGrainLanes {
 public:
  PlainGrainLanes(std::int16_t* lineA, std::int16_t* lineB) : a(lineA), b(lineB) {}

  /// Sets where a tap is read between the nearer sample (0) and the farther one.
  void setFraction(std::int32_t gain) { fraction = gain; }
  /// How much of the input goes into line A; the rest goes into line B.
  void setRecord(std::int32_t gain) { record = gain; }
  /// How much of line B sounds; the rest is line A.
  void setOutput(std::int32_t gain) { output = gain; }
  void setMix(std::int32_t gain) { mix = gain; }

  /// One sample of both channels, in place.
  void step(GrainPlace at, std::int16_t& left, std::int16_t& right) const {
    using namespace cofu::core;
    const std::int32_t x = (left + right) >> 1;
    const std::int32_t intoA = saturate(mul15(tap(a, at), kFullScale - record) + mul15(record, x));
    const std::int32_t intoB = saturate(mul15(tap(b, at), record) + mul15(kFullScale - record, x));
    a[at.write] = static_cast<std::int16_t>(intoA);
    b[at.write] = static_cast<std::int16_t>(intoB);
    const std::int32_t grain = saturate(mul15(intoA, kFullScale - output) + mul15(intoB, output));
    const std::int32_t wet = mul15(grain, mix);
    left = static_cast<std::int16_t>(saturate(mul15(kFullScale - mix, left) + wet));
    right = static_cast<std::int16_t>(saturate(mul15(kFullScale - mix, right) + wet));
  }

 private:
  std::int32_t tap(const std::int16_t* line, GrainPlace at) const {
    return cofu::core::mul15(line[at.far] - line[at.near], fraction) + line[at.near];
  }

  std::int16_t* a;
  std::int16_t* b;
  std::int32_t fraction = 0;
  std::int32_t record = 0;
  std::int32_t output = 0;
  std::int32_t mix = 0;
};

#if defined(__SSE2__)
/// The same law in vector registers. Each lane holds a gain in its low 16 bits and 0 in its high 16, so that the
/// instruction that multiplies and adds word pairs yields one product per lane, whatever the other factor holds above.
class GrainLanes {
 public:
  GrainLanes(std::int16_t* lineA, std::int16_t* lineB) : a(lineA), b(lineB) {}

  /// Here both words count: far * fraction - near * fraction.
  void setFraction(std::int32_t gain) { fraction = _mm_set1_epi32((gain & 0xFFFF) | ((-gain & 0xFFFF) << 16)); }
  void setRecord(std::int32_t gain) { record = _mm_xor_si128(_mm_set1_epi32(gain), _mm_set_epi32(kAll, 0, 0, kAll)); }
  void setOutput(std::int32_t gain) { output = _mm_xor_si128(_mm_set1_epi32(gain), _mm_set_epi32(0, 0, 0, kAll)); }
  void setMix(std::int32_t gain) { mix = _mm_xor_si128(_mm_set1_epi32(gain), _mm_set_epi32(0, 0, kAll, kAll)); }

  void step(GrainPlace at, std::int16_t& left, std::int16_t& right) const {
    const int x = (left + right) >> 1;
    // Lanes 0 and 1 hold the taps of A and B, lanes 2 and 3 the input.
    __m128i sources = _mm_insert_epi16(taps(at), x, 4);
    sources = _mm_insert_epi16(sources, x, 6);
    const __m128i into = limited(halvesAdded(product15(sources, record)));
    const int both = _mm_cvtsi128_si32(into);
    a[at.write] = static_cast<std::int16_t>(both);
    b[at.write] = static_cast<std::int16_t>(both >> 16);

    // The shares of both lines sum to less than full scale: no sum here needs a limit.
    const __m128i shares = product15(_mm_unpacklo_epi16(into, into), output);
    const __m128i grain = _mm_add_epi32(shares, _mm_shuffle_epi32(shares, _MM_SHUFFLE(1, 1, 1, 1)));
    // Lanes 0 and 1 hold the dry sides, lanes 2 and 3 the grain.
    __m128i sounds = _mm_shuffle_epi32(grain, _MM_SHUFFLE(0, 0, 0, 0));
    sounds = _mm_insert_epi16(sounds, left, 0);
    sounds = _mm_insert_epi16(sounds, right, 2);
    const int sides = _mm_cvtsi128_si32(limited(halvesAdded(product15(sounds, mix))));
    left = static_cast<std::int16_t>(sides);
    right = static_cast<std::int16_t>(sides >> 16);
  }

 private:
  /// 32767 - gain is gain with these bits turned.
  static constexpr int kAll = cofu::core::kFullScale;

  static __m128i product15(__m128i x, __m128i gain) { return _mm_srai_epi32(_mm_madd_epi16(x, gain), 15); }
  static __m128i halvesAdded(__m128i x) { return _mm_add_epi32(x, _mm_unpackhi_epi64(x, x)); }
  static __m128i limited(__m128i x) { return _mm_max_epi16(_mm_packs_epi32(x, x), _mm_set1_epi16(-kAll)); }

  __m128i taps(GrainPlace at) const {
    __m128i pairs = _mm_cvtsi32_si128(a[at.far]);
    pairs = _mm_insert_epi16(pairs, a[at.near], 1);
    pairs = _mm_insert_epi16(pairs, b[at.far], 2);
    pairs = _mm_insert_epi16(pairs, b[at.near], 3);
    return _mm_add_epi32(product15(pairs, fraction), _mm_srai_epi32(pairs, 16));
  }

  std::int16_t* a;
  std::int16_t* b;
  __m128i fraction = _mm_setzero_si128();
  __m128i record = _mm_setzero_si128();
  __m128i output = _mm_setzero_si128();
  __m128i mix = _mm_setzero_si128();
};
#else
using GrainLanes = PlainGrainLanes;
#endif

}  // namespace tesh::bramel::plugin::sivray::effects
