// The coefficients of the peaking equalizer, in single precision, and its filter.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/PeakingEQ.h"

#include <cmath>
#include <numbers>

#include "core/EngineRate.h"
#include "effects/filters/PeakingStep.h"
#include "effects/interfaces/OneLong.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr auto kSampleRate = static_cast<float>(cofu::core::kEngineRate);
constexpr float kOne = 1 << PeakingEQ::kFractionBits;

/// Decibels per step of the Gain knob (30 / 127), and at its start.
constexpr float kDecibelsPerStep = 0.23622048F;
constexpr float kLeastDecibels = -15.0F;

/// Width of the bell, about 1.0: the start of a straight line from 1.0 to 5.0, in single precision.
constexpr float kQ = 64.0F * 0.06349207F + 1.0F - 4.0634923F;

// The library's single-precision functions pick their instructions by the processor, and their last bit may differ.
// Computed in double precision and rounded, the results are the same on every machine.
float power(float base, float exponent) {
  return static_cast<float>(std::pow(static_cast<double>(base), static_cast<double>(exponent)));
}
float sine(float x) { return static_cast<float>(std::sin(static_cast<double>(x))); }
float cosine(float x) { return static_cast<float>(std::cos(static_cast<double>(x))); }

float frequencyOf(int knob) { return 440.0F * power(2.0F, static_cast<float>(knob - 61) / 12.0F); }

/// The square root of the gain.
float amplitudeOf(int knob) {
  const float decibels = static_cast<float>(knob) * kDecibelsPerStep + kLeastDecibels;
  return std::sqrt(power(10.0F, decibels / 20.0F));
}

std::int64_t fixedPoint(float x) { return static_cast<std::int64_t>(x * kOne); }

}  // namespace

PeakingEQ::Settings PeakingEQ::settingsOf(const Knobs& knobs) {
  constexpr float kTurn = 2.0F * std::numbers::pi_v<float>;
  const float omega = kTurn * frequencyOf(knobs.edit1) / kSampleRate;
  const float alpha = sine(omega) / (2.0F * kQ);
  const float amplitude = amplitudeOf(knobs.edit2);
  const float wide = alpha * amplitude;
  const float narrow = alpha / amplitude;
  const float d = 1.0F + narrow;
  return {fixedPoint((1.0F + wide) / d), fixedPoint(-2.0F * cosine(omega) / d), fixedPoint((1.0F - wide) / d),
          fixedPoint((1.0F - narrow) / d)};
}

void PeakingEQ::stepSide(const Settings& to, Memory& memory, std::int16_t& sample) {
  using Long = lanes::OneLong;
  PeakingState<Long> state{{memory.x1}, {memory.x2}, {memory.y1}, {memory.y2}};
  const Long x{std::int64_t{sample} * (1 << kInputShift)};
  const Long sum = peakingSum(state, x, {{to.b0}, {to.b1}, {to.b2}, {to.a2}});
  memory = {state.x1.v, state.x2.v, state.y1.v, state.y2.v};
  saturatedSamples(sum.shiftedRight<kFractionBits + kInputShift>()).store(&sample);
}

template class TwoKnobEffect<PeakingEQ>;

}  // namespace tesh::bramel::plugin::sivray::effects
