// "Grain Shifter": records a short piece of the sound and repeats it, on a beat grid.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The gains of both fades over a run, Q15.
struct GrainFades {
  std::int16_t record[kControlGrid];
  std::int16_t output[kControlGrid];
};

/// Models a beat repeater with two lines, A and B, that alternate: one records for half a cycle while the other repeats
/// its last grain.
struct GrainShifterLaw : BorrowedLines<2, 131072> {
  static constexpr LawParts kParts{.followsTempo = true,
                                   .aims = true,
                                   .glides = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleepsAfter = kLineLength};

  struct Settings {
    std::uint32_t step = 0;        ///< Clock step per sample; a cycle is 2^32.
    std::uint32_t grainStart = 0;  ///< Phase to which a restart sets the clock.
    std::int64_t delay = 0;        ///< Length of a grain in samples.
    std::int32_t mix = 0;          ///< Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Clears the lines; the clock restarts at the next sample. The output fade is kept.
  void reset(const Settings& to) SIVRAY_NONBLOCKING;
  void aim(const Settings& to, bool immediate) SIVRAY_NONBLOCKING;
  bool restsAt(const Settings& to, bool immediate) const SIVRAY_NONBLOCKING;
  void glide(const Settings& to, bool immediate) SIVRAY_NONBLOCKING;
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  /// The longest grain would be read where it is being written.
  bool fitsLanes(const Settings& to) const { return to.delay >= kMostLanes && to.delay < kLineLength; }
  static const RunInLanes<GrainShifterLaw> runBaseline;
  static const RunInLanes<GrainShifterLaw> runAvx2;

  /// Advances the clock and its fades by `count` samples, at most `kControlGrid`.
  void followFades(GrainFades& fades, unsigned count) SIVRAY_NONBLOCKING;

  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  Settings now;
  std::uint32_t phase = 0;
  SmoothedValue recordFade;  ///< 1.0 while line A records.
  SmoothedValue outputFade;  ///< 1.0 while line B sounds.
  SmoothedValue mix;
  std::int64_t delay = 0;  ///< Samples, 15 fractional bits.
  std::int32_t fadeGlide = 0;
  bool realign = false;  ///< The clock jumps to the grain's start at the next sample.

 private:
  void moveFade(SmoothedValue& fade, std::uint32_t at) const;
  void followFade(SmoothedValue& fade, std::uint32_t from, std::int16_t* gains, unsigned count) const;
};

extern template class TwoKnobEffect<GrainShifterLaw>;

/// Edit1 is the speed of the grid, Edit2 the balance between dry sound and grains, which are mono. A tempo of 0 or less
/// stops the clock and makes the grains as long as possible.
class SivrayFxGrainShifter : public TwoKnobMemoryEffect<GrainShifterLaw> {
 public:
  /// Posts the initial settings, which are applied at the first sample.
  SivrayFxGrainShifter() { postSettings(); }

  void restartPhase() override { law.realign = true; }
};

}  // namespace tesh::bramel::plugin::sivray::effects
