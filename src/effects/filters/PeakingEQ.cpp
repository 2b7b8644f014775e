// The coefficients in single precision, and the filter in integers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/PeakingEQ.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr float kSampleRate = 44100.0F;
constexpr int kInputShift = 9;
constexpr int kFractionBits = 24;

// The library's single-precision functions pick their instructions by the processor and may differ in the last bit.
// Taken in double precision and rounded, they are the same on every machine.
float power(float base, float exponent) {
  return static_cast<float>(std::pow(static_cast<double>(base), static_cast<double>(exponent)));
}
float sine(float x) { return static_cast<float>(std::sin(static_cast<double>(x))); }
float cosine(float x) { return static_cast<float>(std::cos(static_cast<double>(x))); }

float frequencyOf(int knob) {
  const float octaves = static_cast<float>(knob - 61) / 12.0F;
  return 440.0F * power(2.0F, octaves);
}

float amplitudeOf(int knob) {
  const float decibels = static_cast<float>(knob) * 0.23622048F - 15.0F;
  return std::sqrt(power(10.0F, decibels / 20.0F));
}

float qOf(int knob) {
  const auto i = static_cast<float>(knob);
  return knob < 64 ? i * 0.9F / 64.0F + 0.1F : i * 0.06349207F + 1.0F - 4.0634923F;
}

float fixedPoint(float x) { return std::trunc(x * 16777216.0F); }

}  // namespace

PeakingEQ::PeakingEQ() {
  updateBandwidth();
  updateAmplitude();
  updateCoefficients();
}

int PeakingEQ::setEdit(unsigned index, int value) {
  const int knob = value & 127;
  switch (index) {
    case 0:
      freqKnob = knob;
      updateBandwidth();
      break;
    case 1:
      gainKnob = knob;
      updateAmplitude();
      break;
    case 2:
      qKnob = knob;
      updateBandwidth();
      break;
    default:
      return 0;
  }
  updateCoefficients();
  return knob;
}

void PeakingEQ::updateBandwidth() {
  constexpr float kTurn = 2.0F * std::numbers::pi_v<float>;
  const float angle = kTurn * frequencyOf(freqKnob) / kSampleRate;
  omega = angle;
  alpha = sine(angle) / (2.0F * qOf(qKnob));
}

void PeakingEQ::updateAmplitude() { amplitude = amplitudeOf(gainKnob); }

void PeakingEQ::updateCoefficients() {
  const float wide = alpha * amplitude;
  const float narrow = alpha / amplitude;
  const float d = 1.0F + narrow;
  const float middle = fixedPoint(-2.0F * cosine(omega) / d);
  b0 = fixedPoint((1.0F + wide) / d);
  b1 = middle;
  a1 = middle;
  b2 = fixedPoint((1.0F - wide) / d);
  a2 = fixedPoint((1.0F - narrow) / d);
}

void PeakingEQ::reset() {
  left = {};
  right = {};
}

void PeakingEQ::process(StereoBlock& block, unsigned count) {
  const auto whole = [](float coefficient) { return static_cast<std::int64_t>(coefficient); };
  const Coefficients k{whole(b0), whole(b1), whole(b2), whole(a1), whole(a2)};
  renderChannel(k, left, block.left, count);
  renderChannel(k, right, block.right, count);
}

void PeakingEQ::renderChannel(const Coefficients& coefficients, Memory& memory, std::int16_t* samples, unsigned count) {
  const Coefficients k = coefficients;
  Memory m = memory;
  for (unsigned i = 0; i < count; ++i) {
    const std::int32_t x = samples[i] * (1 << kInputShift);
    const std::int64_t y = (k.b0 * x + k.b1 * m.x1 + k.b2 * m.x2 - k.a1 * m.y1 - k.a2 * m.y2) >> kFractionBits;
    m.x2 = m.x1;
    m.x1 = x;
    m.y2 = m.y1;
    // A jump of the frequency can throw the filter beyond its memory, which keeps the low 32 bits.
    m.y1 = static_cast<std::int32_t>(y);
    const std::int64_t out = y >> kInputShift;
    samples[i] =
        static_cast<std::int16_t>(std::clamp<std::int64_t>(out, -cofu::core::kFullScale, cofu::core::kFullScale));
  }
  memory = m;
}

}  // namespace tesh::bramel::plugin::sivray::effects
