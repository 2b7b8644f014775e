// "Marlo Phase": a moving tap close to the dry sound, so that both cancel at moving frequencies.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a flanger without feedback: one tap a channel, 9 to 81 samples late.
struct MarloPhase : MarloLaw {
  /// How far the triangle moves the tap to each side (36.1 samples), and where it rests (45.2 samples, 1.02 ms).
  static constexpr auto kDepth = static_cast<float>(cofu::core::kEngineRate * 0.004096 * 0.2);
  static constexpr auto kBase = static_cast<float>(cofu::core::kEngineRate * 0.001024);

  static constexpr float kSumGain = 0.75F;

  void reset(const Settings&) {
    lines.clear();
    sweep = {};
  }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static RunInLanes<MarloPhase> runBaseline;
  static RunInLanes<MarloPhase> runAvx2;

  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  MarloSweep sweep;
};

extern template class TwoKnobEffect<MarloPhase>;

}  // namespace tesh::bramel::plugin::sivray::effects
