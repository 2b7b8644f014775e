// The exponential of the tube stage, the same to the bit on every machine: the mathematics library picks its
// instructions by the processor and may differ in the last bit.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <bit>
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

/// e to the power of `x` for x at or below 0, rounded to single precision. Computed in double precision to a few parts
/// in 10^15, so that the result is the nearest single but for one case in ten million. Below -80 it gives e^-80.
inline float exponentialOfNegative(float x) {
  const double wide = static_cast<double>(x);
  const double t = wide > kLowestExponent ? wide : kLowestExponent;
  const double shifted = t * kLog2E + kRounder;
  const double r = t - (shifted - kRounder) * kLn2;
  const double r2 = r * r;
  // The series on |r| <= ln(2) / 2, two terms a pair.
  double p = kTaylor[12] + r * kTaylor[13];
  for (std::size_t pair = 6; pair-- > 0;) {
    p = p * r2 + (kTaylor[2 * pair] + r * kTaylor[2 * pair + 1]);
  }
  const std::uint64_t scaled = std::bit_cast<std::uint64_t>(p) + (std::bit_cast<std::uint64_t>(shifted) << 52);
  return static_cast<float>(std::bit_cast<double>(scaled));
}

}  // namespace tesh::bramel::plugin::fxkit
