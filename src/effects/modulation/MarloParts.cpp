// The settings of the Marlo family, and the smoothing of its triangle.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloParts.h"

#include <cmath>
#include <numbers>

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr auto kRate = static_cast<float>(cofu::core::kEngineRate);

/// The triangle's rate at Speed 0, and what it grows by up to 127; Hz.
constexpr float kLeastRate = 0.125F;
constexpr float kRateSpan = 6.875F;

/// The ensemble's depth at Depth 0, and what it grows by up to 127; shares of the full depth.
constexpr float kLeastDepth = 0.125F;
constexpr float kDepthSpan = 0.375F;
constexpr float kFullDepthSeconds = 0.0128F;

/// What a one-pole smoother with a corner of `hertz` keeps per sample.
float smootherKeeps(double hertz) {
  const double x = 4.0 - 2.0 * std::cos(2.0 * std::numbers::pi * hertz / cofu::core::kEngineRate);
  return static_cast<float>((std::sqrt(x * x - 4.0) - x) * -0.5);
}

}  // namespace

const float kMarloLfoKept = smootherKeeps(3.3865754);

MarloSettings marloSettingsOf(const Knobs& knobs) {
  constexpr auto kTop = static_cast<float>(kTopKnob);
  const float speed = static_cast<float>(knobs.edit1) / kTop;
  const float wide = static_cast<float>(knobs.edit2) / kTop;
  return {(speed * kRateSpan + kLeastRate) / kRate,
          (speed * kDepthSpan + kLeastDepth) * kFullDepthSeconds * kRate * kMarloGained,
          (wide * wide + 1.0F) * kMarloGained};
}

}  // namespace tesh::bramel::plugin::sivray::effects
