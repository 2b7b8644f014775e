// Range reduction is exact in each function; what remains is a short Taylor series.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Math.h"

#include <cmath>

namespace sivray::content {
namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kLogTwo = 0.6931471805599453;
constexpr double kLogTwoOfE = 1.4426950408889634;
constexpr double kDecibelsPerOctave = 6.020599913279624;
constexpr int kSineTerms = 9;
constexpr int kPowerTerms = 13;

}  // namespace

double sineOfTurns(double turns) {
  double x = turns - std::floor(turns + 0.5);
  if (x > 0.25) {
    x = 0.5 - x;
  } else if (x < -0.25) {
    x = -0.5 - x;
  }
  const double angle = kTwoPi * x;
  const double square = angle * angle;
  double sum = 1.0;
  for (int k = kSineTerms; k >= 1; --k) {
    const double divisor = static_cast<double>(2 * k) * static_cast<double>(2 * k + 1);
    sum = 1.0 - square / divisor * sum;
  }
  return angle * sum;
}

double cosineOfTurns(double turns) { return sineOfTurns(turns - std::floor(turns) + 0.25); }

double powerOfTwo(double x) {
  const double whole = std::floor(x + 0.5);
  const double angle = (x - whole) * kLogTwo;
  double sum = 1.0;
  for (int k = kPowerTerms; k >= 1; --k) {
    sum = 1.0 + angle / static_cast<double>(k) * sum;
  }
  return std::ldexp(sum, static_cast<int>(whole));
}

double exponential(double x) { return powerOfTwo(x * kLogTwoOfE); }

double factorOfDecibels(double decibels) { return powerOfTwo(decibels / kDecibelsPerOctave); }

double ratioOfSemitones(double semitones) { return powerOfTwo(semitones / 12.0); }

double decayPerFrame(double seconds) {
  return seconds <= 0.0 ? 0.0 : factorOfDecibels(-60.0 / (seconds * kSampleRate));
}

double saturate(double x) { return x / std::sqrt(1.0 + x * x); }

std::size_t framesOf(double seconds) {
  return seconds <= 0.0 ? 0 : static_cast<std::size_t>(seconds * kSampleRate + 0.5);
}

}  // namespace sivray::content
