// "Room Reverb": the small network added to the dry sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/reverbs/ReverbNetwork.h"

namespace tesh::bramel::plugin::sivray::effects {

struct RoomReverbLaw : ReverbNetwork {
  static constexpr LawParts kParts{.glides = true, .lanes = LaneParts::baselineAndAvx2, .sleepsAfter = kLineLength};

  /// Q15 gains.
  struct Settings {
    std::int32_t feedback = 0;
    std::int32_t level = 0;
  };

  /// Gain of the network's input, Q15. It rises with the level of the wet sound: an eighth at level 0, a quarter at
  /// full level.
  static constexpr std::int32_t inputGainFor(std::int32_t level) { return (level >> 3) + 4096; }

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) {}
  void step(const Settings&, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static bool fitsLanes(const Settings&) { return true; }
  static const RunInLanes<RoomReverbLaw> runBaseline;
  static const RunInLanes<RoomReverbLaw> runAvx2;
  void skip(const Settings&, unsigned count) { moveOn(count); }
  void eachSmoothed(const Settings& to, auto&& visit) {
    visit(level, to.level);
    visit(feedback, to.feedback);
  }

  SmoothedValue feedback;
  SmoothedValue level;
};

extern template class TwoKnobEffect<RoomReverbLaw>;

/// Edit1 is the time, Edit2 the level of the wet sound; the dry sound stays at full level.
class SivrayFxReverb : public TwoKnobMemoryEffect<RoomReverbLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
