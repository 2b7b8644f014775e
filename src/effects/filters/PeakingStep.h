// The section of the peaking equalizer, for one channel or for both side by side. SampleLanes.h tells where this may be
// included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/filters/PeakingEQ.h"
#include "registers/RegisterConcepts.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace lanes {

/// 64 bits for each channel, in the lanes of a register. A product takes the lower 32 bits of its factors.
template <cofu::registers::SignedProducts R>
struct LongsIn {
  typename R::Integers v;

  /// Only the lower 32 bits of the result are valid.
  template <int kBits>
  LongsIn loweredBy() const {
    return {R::template shiftRightUnsigned64<kBits>(v)};
  }
};

template <typename R>
LongsIn<R> operator+(LongsIn<R> a, LongsIn<R> b) {
  return {R::add64(a.v, b.v)};
}

template <typename R>
LongsIn<R> operator-(LongsIn<R> a, LongsIn<R> b) {
  return {R::sub64(a.v, b.v)};
}

template <typename R>
LongsIn<R> operator*(LongsIn<R> a, LongsIn<R> b) {
  return {R::mulEven32(a.v, b.v)};
}

/// a + (b - c) * factor, ordered so that only one product waits for `c`.
template <typename R>
LongsIn<R> plusScaledDifference(LongsIn<R> a, LongsIn<R> b, LongsIn<R> c, LongsIn<R> factor) {
  return (a + b * factor) - c * factor;
}

}  // namespace lanes

template <typename Longs>
struct PeakingGains {
  Longs b0, b1, b2, a2;
};

template <typename Longs>
struct PeakingState {
  Longs x1, x2, y1, y2;
};

/// One sample. `Longs` are LongsIn or OneLong. Returns the sum of products, kFractionBits above the output.
template <typename Longs>
Longs peakingSum(PeakingState<Longs>& s, Longs x, const PeakingGains<Longs>& to) {
  const Longs older = x * to.b0 + (s.x2 * to.b2 - s.y2 * to.a2);
  const Longs sum = plusScaledDifference(older, s.x1, s.y1, to.b1);
  // A jump of the frequency can make the filter overflow; the state keeps the low 32 bits.
  s = {x, s.x1, sum.template loweredBy<PeakingEQ::kFractionBits>(), s.y1};
  return sum;
}

}  // namespace tesh::bramel::plugin::sivray::effects
