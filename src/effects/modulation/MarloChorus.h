// "Marlo Chorus": a moving tap beside the dry sound, both through a highpass.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a chorus: one tap a channel, 150 to 226 samples late.
struct MarloChorus {
  static constexpr Knobs kStart{};
  static constexpr int kOtherRestart = kMarloRestart;
  using Settings = MarloSettings;

  /// A one-pole highpass on an input that is scaled first.
  struct Highpass {
    float previousInput = 0.0F;
    float output = 0.0F;

    float run(float x, float kept, float inputScale);
    bool operator==(const Highpass&) const = default;
  };

  struct Side {
    Highpass dry;
    Highpass wet;

    /// Whether silence gives silence and changes nothing: rounding may hold a highpass next to 0.
    bool isSilent() const SIVRAY_NONBLOCKING;
    bool operator==(const Side&) const = default;
  };

  static Settings settingsOf(const Knobs& knobs) { return marloSettingsOf(knobs); }
  void reset(const Settings&) { *this = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  static constexpr unsigned kMemory = MarloLines::kMemory;
  bool isSilent(unsigned count) const { return leftSide.isSilent() && rightSide.isSilent() && lines.isSilent(count); }
  void skip(const Settings& to, unsigned count) {
    sweep.skip(to, count);
    lines.skip(count);
  }

  MarloLines lines;
  MarloSweep sweep;
  Side leftSide;
  Side rightSide;
};

extern template class TwoKnobEffect<MarloChorus>;

}  // namespace tesh::bramel::plugin::sivray::effects
