// The settings of the Marlo family, the corners of its filters, and the laws of chorus, phase and ensemble.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/SivrayFxIMarloEffects.h"

#include <cmath>
#include <numbers>

#include "effects/modulation/EnsembleStep.h"
#include "effects/modulation/MarloStep.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr auto kRate = static_cast<float>(cofu::core::kEngineRate);

/// The triangle's rate at Speed 0, and its increase up to 127; Hz.
constexpr float kLeastRate = 0.125F;
constexpr float kRateSpan = 6.875F;

/// The ensemble's depth at Depth 0, and its increase up to 127; shares of the full depth.
constexpr float kLeastDepth = 0.125F;
constexpr float kDepthSpan = 0.375F;
constexpr float kFullDepthSeconds = 0.0128F;

/// The share that a one-pole smoother with a corner of `hertz` keeps per sample.
float smootherKeeps(double hertz) {
  const double x = 4.0 - 2.0 * std::cos(2.0 * std::numbers::pi * hertz / cofu::core::kEngineRate);
  return static_cast<float>((std::sqrt(x * x - 4.0) - x) * -0.5);
}

/// The share of its output that a one-pole highpass with a corner of `hertz` keeps per sample.
float highpassKeeps(double hertz) {
  const double v = -2.0 * std::cos(2.0 * std::numbers::pi * hertz / cofu::core::kEngineRate);
  return static_cast<float>((std::sqrt(16.0 - 4.0 * v * v) - 4.0) / (2.0 * v));
}

float inputScaleOf(float kept) { return (kept + 1.0F) * 0.5F; }

}  // namespace

const float kMarloLfoKept = smootherKeeps(3.3865754);

MarloSettings MarloLaw::settingsOf(const Knobs& knobs) {
  constexpr auto kTop = static_cast<float>(kTopKnob);
  const float speed = static_cast<float>(knobs.edit1) / kTop;
  const float wide = static_cast<float>(knobs.edit2) / kTop;
  return {(speed * kRateSpan + kLeastRate) / kRate,
          (speed * kDepthSpan + kLeastDepth) * kFullDepthSeconds * kRate * kMarloGained,
          (wide * wide + 1.0F) * kMarloGained};
}

// The chorus.

const float MarloChorus::kDryKept = highpassKeeps(48.228771);
const float MarloChorus::kWetKept = highpassKeeps(32.152514);
const float MarloChorus::kDryScale = inputScaleOf(kDryKept);
const float MarloChorus::kWetScale = inputScaleOf(kWetKept);

bool MarloChorus::isSilent(unsigned count) const {
  MarloHighpasses next(*this);
  MarloPair<MarloOne> dry{};
  MarloPair<MarloOne> wet{};
  next.runBoth<MarloOne>(dry, wet);
  std::int16_t left = 0;
  std::int16_t right = 0;
  storeMarlo<MarloOne>(&left, chorused(dry.left, wet.left));
  storeMarlo<MarloOne>(&right, chorused(dry.right, wet.right));
  const auto areEqual = [](MarloQuad a, MarloQuad b) {
    using R = cofu::registers::Registers128;
    return R::isZero(R::bitOr(R::greaterFloats(a, b), R::greaterFloats(b, a)));
  };
  const bool rests = areEqual(next.previousInput, previousInputs) && areEqual(next.output, outputs);
  return left == 0 && right == 0 && rests && lines.isSilent(count);
}

void MarloChorus::skip(const Settings& to, unsigned count) {
  skipSweep(sweep, to, count);
  lines.skip(count);
}

void MarloChorus::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runMarloChorus<MarloOne>(*this, &left, &right, 1);
}

const RunInLanes<MarloChorus> MarloChorus::runBaseline = runMarloChorus<MarloIn<cofu::registers::Registers128>>;

template class TwoKnobEffect<MarloChorus>;

// The phase effect.

void MarloPhase::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runMarloPhase<MarloOne>(*this, &left, &right, 1);
}

void MarloPhase::skip(const Settings& to, unsigned count) {
  skipSweep(sweep, to, count);
  lines.skip(count);
}

const RunInLanes<MarloPhase> MarloPhase::runBaseline = runMarloPhase<MarloIn<cofu::registers::Registers128>>;

template class TwoKnobEffect<MarloPhase>;

// The ensemble.

void MarloEnsemble::skip(const Settings&, unsigned count) { skipEnsemble(*this, count); }

void MarloEnsemble::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runEnsemble<MarloOne>(*this, &left, &right, 1);
}

const RunInLanes<MarloEnsemble> MarloEnsemble::runBaseline = runEnsemble<MarloIn<cofu::registers::Registers128>>;

template class TwoKnobEffect<MarloEnsemble>;

}  // namespace tesh::bramel::plugin::sivray::effects
