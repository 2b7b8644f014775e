// "Tremolo": one oscillator of free speed moves the gain of both channels.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/modulation/GainModulator.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the speed (0.87 to 20 Hz), Edit2 the depth. The output is mono.
struct Q60393Tremolo : GainModulator {
  static constexpr LawParts kParts{.start = Knobs{72, 63},
                                   .resetTakesPending = true,
                                   .aims = true,
                                   .glides = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleeps = true};

  static constexpr std::int32_t kSpread = 0;

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static RunInLanes<Q60393Tremolo> runBaseline;
  static RunInLanes<Q60393Tremolo> runAvx2;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;
};

extern template class TwoKnobEffect<Q60393Tremolo>;

}  // namespace tesh::bramel::plugin::sivray::effects
