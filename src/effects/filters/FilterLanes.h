// What the state-variable filter adds to the stereo lanes: products of 24-bit values and a limit at 24 bits.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "effects/interfaces/StereoLanes.h"

namespace tesh::bramel::plugin::sivray::effects::lanes {

/// Full scale of the filter's values.
inline constexpr std::int32_t kFull24 = 16777215;

/// (value * factor) >> 23 in 64 bits, for values within +-2^25 and factors of 0 to 2^25.
inline PlainLanes mulShift23(PlainLanes value, PlainLanes factor) {
  const auto shifted = [](std::int64_t a, std::int64_t b) { return static_cast<std::int32_t>((a * b) >> 23); };
  return {shifted(value.l, factor.l), shifted(value.r, factor.r)};
}

/// Limits to -16777215 .. 16777215.
inline PlainLanes limited24(PlainLanes value) {
  return {std::clamp(value.l, -kFull24, kFull24), std::clamp(value.r, -kFull24, kFull24)};
}

#if defined(__SSE2__)
/// The instruction multiplies unsigned values: 2^25 is added first, and its share of the product, a whole number,
/// subtracted afterwards.
inline StereoLanes mulShift23(StereoLanes value, StereoLanes factor) {
  const __m128i raised = _mm_add_epi32(value.v, _mm_set1_epi32(1 << 25));
  const __m128i product = _mm_srli_epi64(_mm_mul_epu32(raised, factor.v), 23);
  return {_mm_sub_epi32(product, _mm_slli_epi32(factor.v, 2))};
}

/// By masks: four steps one after the other. This is the longest part of the filter's loop.
inline StereoLanes limited24(StereoLanes value) {
  const __m128i top = _mm_set1_epi32(kFull24);
  const __m128i bottom = _mm_set1_epi32(-kFull24);
  const __m128i above = _mm_cmpgt_epi32(value.v, top);
  const __m128i below = _mm_cmplt_epi32(value.v, bottom);
  const __m128i limits = _mm_or_si128(_mm_and_si128(above, top), _mm_and_si128(below, bottom));
  return {_mm_or_si128(_mm_andnot_si128(_mm_or_si128(above, below), value.v), limits)};
}
#endif

}  // namespace tesh::bramel::plugin::sivray::effects::lanes
