// The small network that the room and the gate reverb share: two combs side by side, two all-passes, an output delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Five delay lines; NetworkStep.h moves them on. Audio thread only; `lines` must be set before anything runs. Delays
/// are samples at 44100 Hz, without common factors, so that their echoes do not coincide. None is shorter than a
/// register of sample lanes.
struct ReverbNetwork : BorrowedLines<5, 4096> {
  static constexpr unsigned kComb0Delay = 2669;
  static constexpr unsigned kComb1Delay = 2824;
  static constexpr unsigned kAllPass1Delay = 969;
  static constexpr unsigned kAllPass2Delay = 2301;
  static constexpr unsigned kOutputDelay = 1676;
  static constexpr std::int32_t kComb1Kept = 32766;    ///< Q15: takes a little off, so that the echoes die out.
  static constexpr std::int32_t kAllPassGain = 22937;  ///< 0.7 in Q15.

  /// The left channel's share of the wet sound in Q15: it hears the network at once, the right one late and in full.
  static constexpr std::int32_t kEarlyGain = 24823;

  /// Loop gain of the combs by Time knob, Q15: 0.625 to 0.9375 along the convex curve.
  static constexpr std::int32_t feedbackOf(int timeKnob) { return ((valueAt(convexTable, timeKnob) * 5) >> 4) + 20480; }
};

}  // namespace tesh::bramel::plugin::sivray::effects
