// "Auto Pan": two oscillators in step with the tempo, half a cycle apart, move the gains of the two channels.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/modulation/GainModulator.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the note value, Edit2 the depth. A mono signal moves from side to side. A tempo of 0 or below stops it.
struct Q60393Autopan : GainModulator {
  static constexpr LawParts kParts{.start = Knobs{72, 63},
                                   .followsTempo = true,
                                   .resetTakesPending = true,
                                   .aims = true,
                                   .glides = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleeps = true};

  static constexpr std::int32_t kSpread = linearTable[kTopKnob] << 16;  ///< Half a cycle less 2^16.

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static RunInLanes<Q60393Autopan> runBaseline;
  static RunInLanes<Q60393Autopan> runAvx2;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;
};

extern template class TwoKnobEffect<Q60393Autopan>;

}  // namespace tesh::bramel::plugin::sivray::effects
