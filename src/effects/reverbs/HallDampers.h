// The dampers in the hall's combs: the one part of its law that hears its own last sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/interfaces/SampleLanes.h"
#include "effects/reverbs/HallTables.h"

namespace tesh::bramel::plugin::sivray::effects {

/// A value for each comb.
template <typename Samples>
using Combs = std::array<Samples, kHallLanes>;

/// Four one-pole low-passes that turn the sign: z = (z + comb) * damper - comb, with Q15 dampers from 0 to 1.0.
class HallDampers {
 public:
  explicit HallDampers(const HallRow& dampers) {
    for (std::size_t k = 0; k < kHallLanes; ++k) {
      ofLast[2 * k] = dampers[k];
      ofComb[2 * k] = static_cast<std::int16_t>(dampers[k] - 32768);
    }
  }

  void reset() { last = {}; }

  /// The next sample of each comb becomes its z.
  void damp(Combs<OneSample>& combs) {
    for (std::size_t k = 0; k < kHallLanes; ++k) {
      const std::int32_t comb = combs[k].v;
      last[k] = cofu::core::saturate(cofu::core::mul15(last[k] + comb, ofLast[2 * k]) - comb);
      combs[k].v = last[k];
    }
  }

  /// The next eight. Computes z as (z * damper + comb * (damper - 1.0)) >> 15, which is the same, but whose second
  /// product does not wait for the last z. Nothing has to be limited: but for the sign, z lies between the last z and
  /// the comb.
  void damp(Combs<SamplesSse2>& combs) {
    const __m128i firstOf01 = _mm_unpacklo_epi16(combs[0].v, combs[1].v);
    const __m128i firstOf23 = _mm_unpacklo_epi16(combs[2].v, combs[3].v);
    const __m128i secondOf01 = _mm_unpackhi_epi16(combs[0].v, combs[1].v);
    const __m128i secondOf23 = _mm_unpackhi_epi16(combs[2].v, combs[3].v);
    __m128i z = _mm_loadu_si128(reinterpret_cast<const __m128i*>(last.data()));
    const __m128i z01 = twoRows(z, _mm_unpacklo_epi32(firstOf01, firstOf23));
    const __m128i z23 = twoRows(z, _mm_unpackhi_epi32(firstOf01, firstOf23));
    const __m128i z45 = twoRows(z, _mm_unpacklo_epi32(secondOf01, secondOf23));
    const __m128i z67 = twoRows(z, _mm_unpackhi_epi32(secondOf01, secondOf23));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(last.data()), z);
    const FourRows first = columnsOf(z01, z23);
    const FourRows second = columnsOf(z45, z67);
    combs[0].v = _mm_unpacklo_epi64(first.of01, second.of01);
    combs[1].v = _mm_unpackhi_epi64(first.of01, second.of01);
    combs[2].v = _mm_unpacklo_epi64(first.of23, second.of23);
    combs[3].v = _mm_unpackhi_epi64(first.of23, second.of23);
  }

 private:
  /// Four samples of combs 0 and 1, and of combs 2 and 3.
  struct FourRows {
    __m128i of01;
    __m128i of23;
  };

  /// A row holds one sample of each comb. Returns what becomes of two rows.
  __m128i twoRows(__m128i& z, __m128i rows) const {
    const __m128i first = row(z, _mm_unpacklo_epi16(rows, __m128i{}));
    const __m128i second = row(z, _mm_unpackhi_epi16(rows, __m128i{}));
    return _mm_packs_epi32(first, second);
  }

  /// The combs lie in the lower words of the lanes. The upper words count for nothing.
  __m128i row(__m128i& z, __m128i comb) const {
    const __m128i fromComb = _mm_madd_epi16(comb, _mm_loadu_si128(reinterpret_cast<const __m128i*>(ofComb.data())));
    const __m128i fromLast = _mm_madd_epi16(z, _mm_loadu_si128(reinterpret_cast<const __m128i*>(ofLast.data())));
    z = _mm_srai_epi32(_mm_add_epi32(fromLast, fromComb), 15);
    return z;
  }

  static FourRows columnsOf(__m128i rows01, __m128i rows23) {
    const __m128i even = _mm_unpacklo_epi16(rows01, rows23);
    const __m128i odd = _mm_unpackhi_epi16(rows01, rows23);
    return {_mm_unpacklo_epi16(even, odd), _mm_unpackhi_epi16(even, odd)};
  }

  std::array<std::int32_t, kHallLanes> last{};
  std::array<std::int16_t, 2 * kHallLanes> ofLast{};  ///< Q15 weight, and 0.
  std::array<std::int16_t, 2 * kHallLanes> ofComb{};  ///< Q15 weight, and 0.
};

}  // namespace tesh::bramel::plugin::sivray::effects
