// "Marlo Ensemble": three moving taps a channel and no dry sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a string ensemble: each voice's tap is moved by a fast and a slow sine, a third of a cycle apart from the
/// next voice. The right voices follow the left ones at a distance that Spread sets.
struct MarloEnsemble {
  static constexpr LawParts kParts{.start = Knobs{},
                                   .otherRestart = kMarloRestart,
                                   .aims = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleeps = true};

  using Settings = MarloSettings;

  /// One value per voice, and a fourth that copies the last voice and is not heard.
  using Voices = std::array<float, 4>;

  /// Phases on -2 .. 2, which is one cycle.
  static constexpr Voices kStartPhases{0.6666667F, -0.6666667F, -2.0F, -2.0F};

  static Settings settingsOf(const Knobs& knobs) { return marloSettingsOf(knobs); }
  void reset(const Settings&) { *this = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  void aim(const Settings& to, bool) { settings = to; }

  static bool fitsLanes(const Settings&) { return true; }
  static unsigned runBaseline(MarloEnsemble& law, std::int16_t* left, std::int16_t* right,
                              unsigned count) SIVRAY_NONBLOCKING;
  static unsigned runAvx2(MarloEnsemble& law, std::int16_t* left, std::int16_t* right,
                          unsigned count) SIVRAY_NONBLOCKING;

  static constexpr unsigned kMemory = MarloLines::kMemory;
  bool isSilent(unsigned count) const { return lines.isSilent(count); }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  MarloLines lines;
  MarloSettings settings;                                              ///< Of the lanes.
  float depth = static_cast<float>(0.0016 * cofu::core::kEngineRate);  ///< Samples; starts where Depth 0 rests.
  float spread = 1.0F;
  Voices fast = kStartPhases;
  Voices slow = kStartPhases;
};

extern template class TwoKnobEffect<MarloEnsemble>;

}  // namespace tesh::bramel::plugin::sivray::effects
