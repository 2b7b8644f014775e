// "BPM Delay": two long delay lines whose time is a note value, with an inverted feedback on each side.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <limits>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a feedback comb per channel. When the time changes, it moves gradually, which bends the pitch of the echoes
/// like a tape delay. The line of the right output comes first.
struct BpmSyncDelayLaw : BorrowedLines<2, 131072> {
  /// Value of a note knob or tempo that was never set. The time is 0 until one of them is.
  static constexpr int kNeverSet = std::numeric_limits<int>::min();

  static constexpr LawParts kParts{.start = Knobs{kNeverSet, 0, kNeverSet},
                                   .followsTempo = true,
                                   .resetTakesPending = true,
                                   .glides = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleepsAfter = kLineLength};

  struct Settings {
    std::int32_t inputGain;  ///< Q15.
    std::int32_t feedback;   ///< Q15.
    std::int32_t time;       ///< Samples.
  };

  /// The delayed samples for the next sample, and their Q15 gain.
  struct Taps {
    std::int32_t left = 0;
    std::int32_t right = 0;
    std::int32_t feedback = 0;
    bool operator==(const Taps&) const = default;
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings& now) SIVRAY_NONBLOCKING;
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  bool fitsLanes(const Settings& now) const SIVRAY_NONBLOCKING;
  static const RunInLanes<BpmSyncDelayLaw> runBaseline;
  static const RunInLanes<BpmSyncDelayLaw> runAvx2;

  /// The taps as they were read after the last sample, provided that time and feedback have been at rest since.
  Taps lastTaps() const SIVRAY_NONBLOCKING;

  bool isSilent(unsigned count) const { return taps.left == 0 && taps.right == 0 && BorrowedLines::isSilent(count); }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  void eachSmoothed(const Settings& to, auto&& visit) {
    visit(inputGain, to.inputGain);
    visit(feedback, to.feedback);
  }

  SmoothedValue inputGain;
  SmoothedValue feedback;
  std::int32_t time = 0;  ///< Samples, 12 fractional bits.
  Taps taps;
};

extern template class TwoKnobEffect<BpmSyncDelayLaw>;

/// Edit1 selects the note, Edit2 the feedback. A note that does not fit the line at the current tempo is replaced by
/// the longest that does. The tempo is truncated to whole beats per minute, at least 1.
class SivrayFxBpmSyncDelay : public TwoKnobMemoryEffect<BpmSyncDelayLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
