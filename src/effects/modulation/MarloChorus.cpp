// The law of the Marlo chorus.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloChorus.h"

#include <cmath>
#include <numbers>

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// How far the triangle moves the tap to each side (37.6 samples), and where it rests (188.2 samples, 4.27 ms).
constexpr auto kDepth = static_cast<float>(cofu::core::kEngineRate * 0.004267 * 0.2);
constexpr auto kBase = static_cast<float>(cofu::core::kEngineRate * 0.0042666);

/// The wet sound's share, and the gain of the sum that keeps it within full scale.
constexpr float kWetGain = 0.66666F;
constexpr float kSumGain = 0.75F;

/// What a one-pole highpass with a corner of `hertz` keeps of its output per sample.
float highpassKeeps(double hertz) {
  const double v = -2.0 * std::cos(2.0 * std::numbers::pi * hertz / cofu::core::kEngineRate);
  return static_cast<float>((std::sqrt(16.0 - 4.0 * v * v) - 4.0) / (2.0 * v));
}

float inputScaleOf(float kept) { return (kept + 1.0F) * 0.5F; }

const float kDryKept = highpassKeeps(48.228771);
const float kWetKept = highpassKeeps(32.152514);
const float kDryScale = inputScaleOf(kDryKept);
const float kWetScale = inputScaleOf(kWetKept);

float chorus(MarloChorus::Side& side, float in, float tap) {
  const float dry = side.dry.run(in, kDryKept, kDryScale);
  const float wet = side.wet.run(tap, kWetKept, kWetScale);
  return limited((wet * kWetGain + dry) * kSumGain);
}

}  // namespace

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

template class TwoKnobEffect<MarloChorus>;

}  // namespace tesh::bramel::plugin::sivray::effects
