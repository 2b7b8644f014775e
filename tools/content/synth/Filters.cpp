// Coefficients and processing loops of the biquad and the state-variable filter.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Filters.h"

#include <algorithm>
#include <cmath>

#include "content/synth/Lanes.h"
#include "content/synth/Math.h"

namespace sivray::content {
namespace {

double turnsOf(double hertz) { return std::clamp(hertz, 5.0, 0.49 * kSampleRate) / kSampleRate; }

}  // namespace

Biquad Biquad::lowPass(double hertz, double q) {
  const double cosine = cosineOfTurns(turnsOf(hertz));
  const double alpha = sineOfTurns(turnsOf(hertz)) / (2.0 * q);
  Biquad f;
  f.b1 = (1.0 - cosine) / (1.0 + alpha);
  f.b0 = f.b1 * 0.5;
  f.b2 = f.b0;
  f.a1 = -2.0 * cosine / (1.0 + alpha);
  f.a2 = (1.0 - alpha) / (1.0 + alpha);
  return f;
}

Biquad Biquad::highPass(double hertz, double q) {
  Biquad f = lowPass(hertz, q);
  const double cosine = cosineOfTurns(turnsOf(hertz));
  const double alpha = sineOfTurns(turnsOf(hertz)) / (2.0 * q);
  f.b0 = (1.0 + cosine) * 0.5 / (1.0 + alpha);
  f.b1 = -2.0 * f.b0;
  f.b2 = f.b0;
  return f;
}

Biquad Biquad::bandPass(double hertz, double q) {
  Biquad f = lowPass(hertz, q);
  const double alpha = sineOfTurns(turnsOf(hertz)) / (2.0 * q);
  f.b0 = alpha / (1.0 + alpha);
  f.b1 = 0.0;
  f.b2 = -f.b0;
  return f;
}

Biquad Biquad::highShelf(double hertz, double decibels) {
  const double a = factorOfDecibels(decibels * 0.5);
  const double cosine = cosineOfTurns(turnsOf(hertz));
  const double alpha = sineOfTurns(turnsOf(hertz)) * 0.7071067811865476;
  const double slope = 2.0 * std::sqrt(a) * alpha;
  const double scale = 1.0 / ((a + 1.0) - (a - 1.0) * cosine + slope);
  Biquad f;
  f.b0 = a * ((a + 1.0) + (a - 1.0) * cosine + slope) * scale;
  f.b1 = -2.0 * a * ((a - 1.0) + (a + 1.0) * cosine) * scale;
  f.b2 = a * ((a + 1.0) + (a - 1.0) * cosine - slope) * scale;
  f.a1 = 2.0 * ((a - 1.0) - (a + 1.0) * cosine) * scale;
  f.a2 = ((a + 1.0) - (a - 1.0) * cosine - slope) * scale;
  return f;
}

Biquad Biquad::resonator(double hertz, double t60) {
  const double radius = decayPerFrame(t60);
  Biquad f;
  f.b0 = 0.0;
  f.b1 = sineOfTurns(turnsOf(hertz)) * radius;
  f.a1 = -2.0 * radius * cosineOfTurns(turnsOf(hertz));
  f.a2 = radius * radius;
  return f;
}

void Biquad::run(Signal& signal) const {
  Biquad filter = *this;
  for (double& sample : signal) {
    sample = filter.next(sample);
  }
}

void Biquad::run(Sound& sound) const {
  if (sound.size() == 1) {
    run(sound.front());
    return;
  }
  Signal& left = sound.front();
  Signal& right = sound.back();
  State<TwoLanes> state;
  for (std::size_t i = 0; i < left.size(); ++i) {
    const TwoLanes out = next(TwoLanes{left[i], right[i]}, state);
    left[i] = out[0];
    right[i] = out[1];
  }
}

double Tuning::to(double hertz) {
  if (hertz != tunedTo) {
    tunedTo = hertz;
    const double half = std::clamp(hertz, 10.0, 20000.0) / kSampleRate * 0.5;
    tangent = sineOfTurns(half) / cosineOfTurns(half);
  }
  return tangent;
}

}  // namespace sivray::content
