// The settings of the Marlo family, and the smoothing of its triangle.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloParts.h"

#include <cmath>
#include <numbers>

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr auto kRate = static_cast<float>(cofu::core::kEngineRate);

/// What a one-pole smoother with a corner of `hertz` keeps per sample.
float smootherKeeps(double hertz) {
  const double x = 4.0 - 2.0 * std::cos(2.0 * std::numbers::pi * hertz / cofu::core::kEngineRate);
  return static_cast<float>((std::sqrt(x * x - 4.0) - x) * -0.5);
}

}  // namespace

const float kMarloLfoKept = smootherKeeps(3.3865754);

MarloSettings marloSettingsOf(const Knobs& knobs) {
  const float speed = static_cast<float>(knobs.edit1) / 127.0F;
  const float wide = static_cast<float>(knobs.edit2) / 127.0F;
  return {(speed * 6.875F + 0.125F) / kRate, (speed * 0.375F + 0.125F) * 0.0128F * kRate * 0.002F,
          (wide * wide + 1.0F) * 0.002F};
}

}  // namespace tesh::bramel::plugin::sivray::effects
