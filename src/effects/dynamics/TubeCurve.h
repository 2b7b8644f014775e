// The curve of the tube stage, as a template over OneValue or several values side by side. All steps are single
// precision, except the exponential. A source file for an instruction set includes this between the marks of
// core/VectorCode.h.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tesh::bramel::plugin::fxkit {

inline constexpr double kLowestExponent = -80.0;
inline constexpr double kLog2E = 1.4426950408889634074;
inline constexpr double kLn2 = 0.69314718055994530942;

/// Adding this leaves the nearest whole number in the low bits of the sum.
inline constexpr double kRounder = 6755399441055744.0;

/// Taylor's series to the 13th power: 1 / n!.
inline constexpr auto kTaylor = [] {
  std::array<double, 14> reciprocals{1.0};
  double factorial = 1.0;
  for (std::size_t n = 1; n < reciprocals.size(); ++n) {
    factorial *= static_cast<double>(n);
    reciprocals[n] = 1.0 / factorial;
  }
  return reciprocals;
}();

/// The types of the tube's arithmetic: one value, or several side by side.
struct OneValue {
  using Floats = float;
  using Words = std::int32_t;
  using Doubles = double;
  using Longs = std::uint64_t;

  static Doubles widened(Floats x) { return static_cast<double>(x); }
  static Floats narrowed(Doubles x) { return static_cast<float>(x); }
};

/// e to the power of `x` for x at or below 0, rounded to single precision; below -80 it gives e^-80. Gives the same
/// bits on every machine: the mathematics library picks its instructions by the processor, and its last bit may differ.
/// Computed in double precision with an error of some 10^-15, so that in all but one case in ten million the
/// result is the nearest single.
template <typename Lanes>
typename Lanes::Floats exponentialOfNegative(typename Lanes::Floats x) {
  using Doubles = typename Lanes::Doubles;
  using Longs = typename Lanes::Longs;
  const Doubles wide = Lanes::widened(x);
  const Doubles lowest = Doubles{} + kLowestExponent;
  const Doubles t = wide > lowest ? wide : lowest;
  const Doubles shifted = t * kLog2E + kRounder;
  const Doubles r = t - (shifted - kRounder) * kLn2;
  const Doubles r2 = r * r;
  // The series for
  // r
  // <= ln(2) / 2, two terms at a time.
  Doubles p = kTaylor[12] + r * kTaylor[13];
  for (std::size_t pair = 6; pair-- > 0;) {
    p = p * r2 + (kTaylor[2 * pair] + r * kTaylor[2 * pair + 1]);
  }
  const Longs scaled = __builtin_bit_cast(Longs, p) + (__builtin_bit_cast(Longs, shifted) << 52);
  return Lanes::narrowed(__builtin_bit_cast(Doubles, scaled));
}

/// Gain of the input at a drive of 1.0.
inline constexpr float kTubeInputScale = 12.0F;

/// How fast the curve approaches its height: within 0.25 % at an input of 1.0.
inline constexpr float kTubeSteepness = 6.0F;

/// The two halves of the wave saturate at slightly different heights.
inline constexpr float kTubeUpperHeight = 0.755F;
inline constexpr float kTubeLowerHeight = 0.765F;

template <typename Lanes>
typename Lanes::Floats tube(typename Lanes::Floats in, typename Lanes::Floats drive, typename Lanes::Floats mix) {
  using Floats = typename Lanes::Floats;
  constexpr std::int32_t kAllButSign = 0x7FFFFFFF;
  const Floats x = drive * in * kTubeInputScale;
  const Floats magnitude = __builtin_bit_cast(Floats, __builtin_bit_cast(typename Lanes::Words, x) & kAllButSign);
  const Floats rise = 1.0F - exponentialOfNegative<Lanes>(-kTubeSteepness * magnitude);
  const Floats y = x >= 0.0F ? rise * kTubeUpperHeight : -rise * kTubeLowerHeight;
  const Floats mixed = (1.0F - mix) * in + mix * y;
  const Floats top = Floats{} + 1.0F;
  const Floats notBelow = mixed < -top ? -top : mixed;
  return notBelow > top ? top : notBelow;
}

}  // namespace tesh::bramel::plugin::fxkit
