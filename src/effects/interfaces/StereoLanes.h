// Left and right side by side: the 32-bit arithmetic of core/FixedPoint.h on both channels at once, for laws that treat
// both channels alike. SampleLanes.h tells where this may be included; laws' headers use StereoWords.h.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/StereoWords.h"
#include "effects/interfaces/WordLanes.h"
#include "registers/RegisterConcepts.h"

// A separate namespace, so that the operations are found by their arguments and hide no scalar function of the same
// name.
namespace tesh::bramel::plugin::sivray::effects::lanes {

/// Both channels in a register of 128 bits, as in StereoWords. Sums, differences and products wrap.
template <cofu::registers::IntegerRegisters R>
struct StereoIn {
  using Integers = typename R::Integers;

  Integers v;

  StereoIn() = default;
  StereoIn(Integers words) : v(words) {}
  StereoIn(StereoWords words) : v(words.v) {}
  operator StereoWords() const { return {v}; }

  static StereoIn of(std::int32_t left, std::int32_t right) { return StereoWords::of(left, right); }
  static StereoIn both(std::int32_t value) { return StereoWords::both(value); }
  std::int32_t left() const { return R::first32(v); }
  std::int32_t right() const { return R::third32(v); }

  template <int kBits>
  StereoIn shiftedRight() const {
    return R::template shiftRight32<kBits>(v);
  }
  /// Shifts in zeros.
  template <int kBits>
  StereoIn shiftedRightUnsigned() const {
    return R::template shiftRightUnsigned32<kBits>(v);
  }
  StereoIn notBelowZero() const {
    if constexpr (cofu::registers::SignedProducts<R>) {
      return R::max32(v, R::zero());
    } else {
      return R::andNot(R::template shiftRight32<31>(v), v);
    }
  }
  /// Limits to -32767 .. 32767.
  StereoIn saturated() const { return R::saturated32(v); }
  /// Writes both lanes to samples, saturated.
  void storeSaturated(std::int16_t& left, std::int16_t& right) const {
    const Integers words = R::max16(R::packed32(v, v), R::all16(-cofu::core::kFullScale));
    left = static_cast<std::int16_t>(R::first32(words));
    right = R::template lane16<2>(words);
  }
};

template <typename R>
StereoIn<R> operator+(StereoIn<R> a, StereoIn<R> b) {
  return R::add32(a.v, b.v);
}

template <typename R>
StereoIn<R> operator-(StereoIn<R> a, StereoIn<R> b) {
  return R::sub32(a.v, b.v);
}

/// The low 32 bits of the products.
template <typename R>
StereoIn<R> operator*(StereoIn<R> a, StereoIn<R> b) {
  return R::mulEvenUnsigned32(a.v, b.v);
}

/// Limits to -limit .. limit.
template <typename R>
StereoIn<R> limited(StereoIn<R> v, std::int32_t limit) {
  return R::limited32(v.v, R::all32(-limit), R::all32(limit));
}

/// a + b, limited to -limit .. limit. Limits b beforehand, because the sum may need 33 bits. `a` must lie within the
/// limits.
template <typename R>
StereoIn<R> limitedSum(StereoIn<R> a, StereoIn<R> b, std::int32_t limit) {
  const StereoIn<R> notAbove = R::min32(b.v, R::sub32(R::all32(limit), a.v));
  return a + StereoIn<R>(R::max32(notAbove.v, R::sub32(R::all32(-limit), a.v)));
}

/// (a * b) >> kBits with a product of 64 bits, of which the lower 32 bits are kept.
template <int kBits, cofu::registers::SignedProducts R>
StereoIn<R> signedProduct(StereoIn<R> a, StereoIn<R> b) {
  return R::template shiftRightUnsigned64<kBits>(R::mulEven32(a.v, b.v));
}

/// (a * b) >> 15 with a product that wraps at 32 bits.
template <typename R>
StereoIn<R> mul15(StereoIn<R> a, StereoIn<R> b) {
  return (a * b).template shiftedRight<15>();
}

/// |v|, which stays -2^31 for -2^31.
template <typename R>
StereoIn<R> magnitude(StereoIn<R> v) {
  return R::abs32(v.v);
}

/// `v` with the sign of `sign`, where that is not 0.
template <typename R>
StereoIn<R> withSignOf(StereoIn<R> v, StereoIn<R> sign) {
  const StereoIn<R> negative = sign.template shiftedRight<31>();
  return StereoIn<R>(R::bitXor(v.v, negative.v)) - negative;
}

using Stereo128 = StereoIn<cofu::registers::Registers128>;

}  // namespace tesh::bramel::plugin::sivray::effects::lanes

namespace tesh::bramel::plugin::sivray::effects {
using lanes::Stereo128;
using lanes::StereoIn;
}  // namespace tesh::bramel::plugin::sivray::effects
