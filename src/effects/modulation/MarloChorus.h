// "Marlo Chorus": a moving tap beside the dry sound, both through a highpass.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a chorus: one tap a channel, 150 to 226 samples late.
struct MarloChorus : MarloLaw {
  /// How far the triangle moves the tap to each side (37.6 samples), and where it rests (188.2 samples, 4.27 ms).
  static constexpr auto kDepth = static_cast<float>(cofu::core::kEngineRate * 0.004267 * 0.2);
  static constexpr auto kBase = static_cast<float>(cofu::core::kEngineRate * 0.0042666);

  /// The wet sound's share, and the gain of the sum that keeps it within full scale.
  static constexpr float kWetGain = 0.66666F;
  static constexpr float kSumGain = 0.75F;

  /// What the highpasses keep of their outputs per sample (corners of 48.2 and 32.2 Hz), and take of their inputs.
  static const float kDryKept;
  static const float kWetKept;
  static const float kDryScale;
  static const float kWetScale;

  /// A value of each highpass: dry left, dry right, wet left, wet right.
  using Highpasses = std::array<float, 4>;

  void reset(const Settings&) {
    lines.clear();
    sweep = {};
    previousInputs = {};
    outputs = {};
  }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static RunInLanes<MarloChorus> runBaseline;
  static RunInLanes<MarloChorus> runAvx2;

  /// Whether silence gives silence and changes nothing: rounding may hold a highpass next to 0.
  bool isSilent(unsigned count) const SIVRAY_NONBLOCKING;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  MarloSweep sweep;
  Highpasses previousInputs{};  ///< Scaled.
  Highpasses outputs{};
};

extern template class TwoKnobEffect<MarloChorus>;

}  // namespace tesh::bramel::plugin::sivray::effects
