// The exponential of the tube stage, the same to the bit on every machine: the mathematics library picks its
// instructions by the processor and may differ in the last bit.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstdint>

namespace tesh::bramel::plugin::fxkit {

/// e to the power of `x` for x at or below 0, rounded to single precision. Computed in double precision to a few parts
/// in 10^15, so that the result is the nearest single but for one case in ten million. Below -80 it gives e^-80.
inline float exponentialOfNegative(float x) {
  constexpr double kLowest = -80.0;
  constexpr double kLog2E = 1.4426950408889634074;
  constexpr double kLn2 = 0.69314718055994530942;
  // Adding this leaves the nearest whole number in the low bits of the sum.
  constexpr double kRounder = 6755399441055744.0;

  const double wide = static_cast<double>(x);
  const double t = wide > kLowest ? wide : kLowest;
  const double shifted = t * kLog2E + kRounder;
  const double r = t - (shifted - kRounder) * kLn2;
  const double r2 = r * r;
  // Taylor's series to the 13th power on |r| <= ln(2) / 2, two terms a pair.
  double p = (1.0 / 479001600.0) + r * (1.0 / 6227020800.0);
  p = p * r2 + ((1.0 / 3628800.0) + r * (1.0 / 39916800.0));
  p = p * r2 + ((1.0 / 40320.0) + r * (1.0 / 362880.0));
  p = p * r2 + ((1.0 / 720.0) + r * (1.0 / 5040.0));
  p = p * r2 + ((1.0 / 24.0) + r * (1.0 / 120.0));
  p = p * r2 + (0.5 + r * (1.0 / 6.0));
  p = p * r2 + (1.0 + r);
  const std::uint64_t scaled = std::bit_cast<std::uint64_t>(p) + (std::bit_cast<std::uint64_t>(shifted) << 52);
  return static_cast<float>(std::bit_cast<double>(scaled));
}

}  // namespace tesh::bramel::plugin::fxkit
