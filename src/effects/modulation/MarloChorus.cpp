// The law of the Marlo chorus.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloChorus.h"

#include <cmath>
#include <numbers>

#include "effects/modulation/MarloLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// What a one-pole highpass with a corner of `hertz` keeps of its output per sample.
float highpassKeeps(double hertz) {
  const double v = -2.0 * std::cos(2.0 * std::numbers::pi * hertz / cofu::core::kEngineRate);
  return static_cast<float>((std::sqrt(16.0 - 4.0 * v * v) - 4.0) / (2.0 * v));
}

float inputScaleOf(float kept) { return (kept + 1.0F) * 0.5F; }

float chorus(MarloChorus::Side& side, float in, float tap) {
  const float dry = side.dry.run(in, MarloChorus::kDryKept, MarloChorus::kDryScale);
  const float wet = side.wet.run(tap, MarloChorus::kWetKept, MarloChorus::kWetScale);
  return limited((wet * MarloChorus::kWetGain + dry) * MarloChorus::kSumGain);
}

}  // namespace

const float MarloChorus::kDryKept = highpassKeeps(48.228771);
const float MarloChorus::kWetKept = highpassKeeps(32.152514);
const float MarloChorus::kDryScale = inputScaleOf(kDryKept);
const float MarloChorus::kWetScale = inputScaleOf(kWetKept);

float MarloChorus::Highpass::run(float x, float kept, float inputScale) {
  const float scaled = inputScale * x;
  output = flushed(kept * output + scaled - previousInput);
  previousInput = scaled;
  return output;
}

bool MarloChorus::Side::isSilent() const {
  Side next = *this;
  return marloSample(chorus(next, 0.0F, 0.0F)) == 0 && next == *this;
}

void MarloChorus::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  sweep.advance(to);
  lines.step(left, right, [this](float inLeft, float inRight, float& outLeft, float& outRight) {
    const float at = lines.writePosition();
    outLeft = chorus(leftSide, inLeft, lines.leftLine.read(sweep.left() * kDepth + at + kBase));
    outRight = chorus(rightSide, inRight, lines.rightLine.read(sweep.right() * kDepth + at + kBase));
  });
}

unsigned MarloChorus::runSse2(MarloChorus& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runMarloChorus<MarloFour>(law, left, right, count);
}

template class TwoKnobEffect<MarloChorus>;

}  // namespace tesh::bramel::plugin::sivray::effects
