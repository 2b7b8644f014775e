// "Marlo Ensemble": three moving taps a channel and no dry sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a string ensemble: each voice's tap is moved by a fast and a slow sine, a third of a cycle apart from the
/// next voice. The right voices follow the left ones at a distance that Spread sets.
struct MarloEnsemble : MarloLaw {
  /// One value per voice, and a fourth that copies the last voice and is not heard.
  using Voices = std::array<float, 4>;

  /// Phases on -2 .. 2, which is one cycle.
  static constexpr Voices kStartPhases{0.6666667F, -0.6666667F, -2.0F, -2.0F};

  void reset(const Settings&) { *this = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static RunInLanes<MarloEnsemble> runBaseline;
  static RunInLanes<MarloEnsemble> runAvx2;

  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  float depth = static_cast<float>(0.0016 * cofu::core::kEngineRate);  ///< Samples; starts where Depth 0 rests.
  float spread = 1.0F;
  Voices fast = kStartPhases;
  Voices slow = kStartPhases;
};

extern template class TwoKnobEffect<MarloEnsemble>;

}  // namespace tesh::bramel::plugin::sivray::effects
