// "Marlo Phase": a moving tap close to the dry sound, so that both cancel at moving frequencies.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a flanger without feedback: one tap a channel, 9 to 81 samples late.
struct MarloPhase {
  static constexpr Knobs kStart{};
  static constexpr int kOtherRestart = kMarloRestart;
  using Settings = MarloSettings;

  static Settings settingsOf(const Knobs& knobs) { return marloSettingsOf(knobs); }
  void reset(const Settings&) { *this = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  static constexpr unsigned kMemory = MarloLines::kMemory;
  bool isSilent(unsigned count) const { return lines.isSilent(count); }
  void skip(const Settings& to, unsigned count) {
    sweep.skip(to, count);
    lines.skip(count);
  }

  MarloLines lines;
  MarloSweep sweep;
};

extern template class TwoKnobEffect<MarloPhase>;

}  // namespace tesh::bramel::plugin::sivray::effects
