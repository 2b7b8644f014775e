// Elementary functions in plain double arithmetic, with the same result bits on every machine. The C library chooses
// its code by processor and may round differently, so no sample is computed by it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/EngineRate.h"

namespace sivray::content {

inline constexpr double kSampleRate = tesh::cofu::core::kEngineRate;

/// Coefficients of the sine's series in the square of the angle, from the last to the first.
inline constexpr std::array<double, 10> kSineSeries = [] {
  std::array<double, 10> series{};
  double factor = 1.0;
  for (std::size_t k = 0; k < series.size(); ++k) {
    series[series.size() - 1 - k] = factor;
    const double order = 2.0 * static_cast<double>(k) + 2.0;
    factor = -factor / (order * (order + 1.0));
  }
  return series;
}();

/// Replaces an angle from -0.25 to 0.25 turns, which is a number or a vector of them, by its sine.
template <typename Value>
void replaceBySine(Value& turns) {
  constexpr double kTwoPi = 6.283185307179586;
  const Value angle = kTwoPi * turns;
  const Value square = angle * angle;
  Value sum{};
  for (const double factor : kSineSeries) {
    sum = sum * square + factor;
  }
  turns = angle * sum;
}

/// As std::floor, but only for numbers below 2^31 in magnitude, which takes far fewer instructions.
inline double wholeBelow(double x) {
  const auto whole = static_cast<double>(static_cast<std::int32_t>(x));
  return whole > x ? whole - 1.0 : whole;
}

/// Returns the sine of an angle in turns (a full circle is 1), accurate to 1e-13 for angles below a million turns.
inline double sineOfTurns(double turns) {
  double x = turns - wholeBelow(turns + 0.5);
  x = std::abs(x) > 0.25 ? std::copysign(0.5, x) - x : x;
  replaceBySine(x);
  return x;
}

inline double cosineOfTurns(double turns) { return sineOfTurns(turns - wholeBelow(turns) + 0.25); }

/// Returns a sine times `depth`, and skips the sine if `depth` is 0.
inline double swing(double depth, double turns) { return depth == 0.0 ? 0.0 : depth * sineOfTurns(turns); }

/// Coefficients of the exponential's series, from the last to the first.
inline constexpr std::array<double, 14> kPowerSeries = [] {
  std::array<double, 14> series{};
  double factor = 1.0;
  for (std::size_t k = 0; k < series.size(); ++k) {
    series[series.size() - 1 - k] = factor;
    factor /= static_cast<double>(k) + 1.0;
  }
  return series;
}();

/// Returns 2 to the power of `x`, for `x` from -1000 to 1000.
inline double powerOfTwo(double x) {
  constexpr double kLogTwo = 0.6931471805599453;
  constexpr int kExponentBias = 1023;
  constexpr int kFractionBits = 52;
  const double whole = wholeBelow(x + 0.5);
  const double angle = (x - whole) * kLogTwo;
  double sum = 0.0;
  for (const double factor : kPowerSeries) {
    sum = sum * angle + factor;
  }
  const auto exponent = static_cast<std::uint64_t>(static_cast<std::int64_t>(whole) + kExponentBias);
  return sum * std::bit_cast<double>(exponent << kFractionBits);
}

/// Returns the base-2 logarithm of a positive number.
double logarithmOfTwo(double x);

/// Returns a positive `base` to the power of `exponent`.
double power(double base, double exponent);

/// Returns e to the power of `x`.
double exponential(double x);

/// Converts decibels to an amplitude factor.
double factorOfDecibels(double decibels);

/// Converts semitones to a frequency ratio.
double ratioOfSemitones(double semitones);

/// Returns the factor per frame of a sound that falls 60 dB in `seconds`; 0 if `seconds` is 0.
double decayPerFrame(double seconds);

/// Saturates smoothly: slope 1 at zero, limits ±1.
inline double saturate(double x) { return x / std::sqrt(1.0 + x * x); }

/// Saturates values above 0.6 in magnitude and leaves others unchanged; limits ±1.
inline double softClip(double x) {
  constexpr double kKnee = 0.6;
  const double over = std::abs(x) - kKnee;
  return over <= 0.0 ? x : std::copysign(kKnee + (1.0 - kKnee) * saturate(over / (1.0 - kKnee)), x);
}

/// Converts seconds to frames, rounded to the nearest, at least 0.
std::size_t framesOf(double seconds);

}  // namespace sivray::content
