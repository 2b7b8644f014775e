// The small network of the room and gate reverbs: two parallel combs, two all-passes, an output delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Five delay lines; NetworkStep.h computes them. Audio thread only; `lines` must be set before anything runs. Delays
/// are samples at 44100 Hz, without common factors, so that their echoes do not coincide. None is shorter than a
/// register of sample lanes.
struct ReverbNetwork : BorrowedLines<5, 4096> {
  static constexpr unsigned kComb0Delay = 2669;
  static constexpr unsigned kComb1Delay = 2824;
  static constexpr unsigned kAllPass1Delay = 969;
  static constexpr unsigned kAllPass2Delay = 2301;
  static constexpr unsigned kOutputDelay = 1676;
  static constexpr std::int32_t kComb1Kept = 32766;    ///< Q15: just below 1.0, so that the echoes decay.
  static constexpr std::int32_t kAllPassGain = 22937;  ///< 0.7 in Q15.

  /// Gain of the left channel's wet sound, Q15: it gets the network's output at once; the right channel gets it later
  /// and in full.
  static constexpr std::int32_t kEarlyGain = 24823;

  /// Loop gain of the combs by Time knob, Q15: 0.625 to 0.9375 along the convex curve.
  static constexpr std::int32_t feedbackOf(int timeKnob) { return ((valueAt(convexTable, timeKnob) * 5) >> 4) + 20480; }
};

}  // namespace tesh::bramel::plugin::sivray::effects
