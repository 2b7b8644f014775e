// The law of the Marlo chorus.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloChorus.h"

#include <cmath>
#include <numbers>

#include "effects/modulation/MarloStep.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// What a one-pole highpass with a corner of `hertz` keeps of its output per sample.
float highpassKeeps(double hertz) {
  const double v = -2.0 * std::cos(2.0 * std::numbers::pi * hertz / cofu::core::kEngineRate);
  return static_cast<float>((std::sqrt(16.0 - 4.0 * v * v) - 4.0) / (2.0 * v));
}

float inputScaleOf(float kept) { return (kept + 1.0F) * 0.5F; }

}  // namespace

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
  return left == 0 && right == 0 && next.rest(*this) && lines.isSilent(count);
}

void MarloChorus::skip(const Settings& to, unsigned count) {
  skipSweep(sweep, to, count);
  lines.skip(count);
}

void MarloChorus::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runMarloChorus<MarloOne>(*this, &left, &right, 1);
}

unsigned MarloChorus::runBaseline(MarloChorus& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runMarloChorus<MarloIn<cofu::registers::Registers128>>(law, left, right, count);
}

template class TwoKnobEffect<MarloChorus>;

}  // namespace tesh::bramel::plugin::sivray::effects
