// "Short Delay": two delay lines whose echoes cross from side to side (ping-pong).
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a feedback comb per channel that is fed by the other channel's echo. There is no separate dry path: the sound
/// that enters a line is also the output. The first line feeds the right channel, the second one the left.
struct ShortDelayLaw : BorrowedLines<2, 16384> {
  static constexpr LawParts kParts{.glides = true, .lanes = LaneParts::baselineAndAvx2, .sleepsAfter = kLineLength};

  struct Settings {
    std::int32_t time = 0;   ///< Samples.
    std::int32_t level = 0;  ///< Loop gain, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) {}
  void step(const Settings&, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  bool fitsLanes(const Settings& now) const { return now.level == 0 || now.time >= kMostLanes; }
  static const RunInLanes<ShortDelayLaw> runBaseline;
  static const RunInLanes<ShortDelayLaw> runAvx2;

  void skip(const Settings&, unsigned count) { moveOn(count); }

  void eachSmoothed(const Settings& to, auto&& visit) {
    visit(level, to.level);
    visit(time, to.time);
  }

  SmoothedValue level;
  SmoothedValue time;
};

extern template class TwoKnobEffect<ShortDelayLaw>;

/// Edit1 is the time (2 to 16382 samples), Edit2 the level of the echoes; the input is reduced by half of that level.
class SivrayFxShortDelay : public TwoKnobMemoryEffect<ShortDelayLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
