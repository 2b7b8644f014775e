// Each function reduces its argument exactly and evaluates a short Taylor series of the rest.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Math.h"

#include <array>
#include <cmath>

namespace sivray::content {
namespace {

constexpr double kLogTwoOfE = 1.4426950408889634;
constexpr double kDecibelsPerOctave = 6.020599913279624;

constexpr int kLogarithmTerms = 13;
constexpr double kRootOfHalf = 0.7071067811865476;

}  // namespace

double logarithmOfTwo(double x) {
  int exponent = 0;
  double fraction = std::frexp(x, &exponent);
  if (fraction < kRootOfHalf) {
    fraction *= 2.0;
    --exponent;
  }
  const double s = (fraction - 1.0) / (fraction + 1.0);
  double sum = 0.0;
  for (int k = kLogarithmTerms; k >= 0; --k) {
    sum = sum * s * s + 1.0 / static_cast<double>(2 * k + 1);
  }
  return static_cast<double>(exponent) + 2.0 * s * sum * kLogTwoOfE;
}

double power(double base, double exponent) { return powerOfTwo(exponent * logarithmOfTwo(base)); }

double exponential(double x) { return powerOfTwo(x * kLogTwoOfE); }

double factorOfDecibels(double decibels) { return powerOfTwo(decibels / kDecibelsPerOctave); }

double ratioOfSemitones(double semitones) { return powerOfTwo(semitones / 12.0); }

double decayPerFrame(double seconds) {
  return seconds <= 0.0 ? 0.0 : factorOfDecibels(-60.0 / (seconds * kSampleRate));
}

std::size_t framesOf(double seconds) {
  return seconds <= 0.0 ? 0 : static_cast<std::size_t>(std::floor(seconds * kSampleRate + 0.5));
}

}  // namespace sivray::content
