// "Slicer": a gate that opens and shuts with the beat.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/BeatGain.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the note value of a cycle, Edit2 the share of it during which the gate stays shut. It has no immediate
/// mode. A tempo of 0 or below stops it.
struct Slicer {
  static constexpr LawParts kParts{.start = Knobs{72, 64},
                                   .followsTempo = true,
                                   .otherRestart = kRhythmicRestart,
                                   .aims = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleeps = true};

  static constexpr std::int32_t kPhaseTop = 2147483647;

  /// The edge at knob 0.
  static constexpr std::int32_t kEdgeWithoutHold = -65536;

  /// Gain while the gate is shut.
  static constexpr std::int32_t kFloor = 0;

  /// Smoothing of the gate: 0.0075 per sample, the square curve at 11. A time constant of 134 samples (3 ms).
  static constexpr std::int32_t kSmoothing = squareTable[11];

  struct Settings {
    std::int32_t lfoStep;     ///< Of a 32-bit phase that wraps, per sample.
    std::int32_t holdOffset;  ///< Phase between the two saws.
    std::int32_t edge;        ///< What their sum exceeds while the gate is open, 2^-16 of a cycle.
    std::int32_t level;       ///< Make-up, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Starts the cycle afresh with the gate shut; the make-up level stays.
  void reset(const Settings&) {
    phase = 0;
    gain.shut();
  }
  void aim(const Settings& to, bool) { now = to; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  /// Without a hold the two saws may meet at their tops, where they sum to 2.0.
  bool fitsLanes(const Settings& to) const { return to.edge != kEdgeWithoutHold && gain.fitsLanes(to.level); }
  static const RunInLanes<Slicer> runBaseline;
  static const RunInLanes<Slicer> runAvx2;

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return true; }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  Settings now{};
  std::int32_t phase = 0;
  BeatGain gain;
};

extern template class TwoKnobEffect<Slicer>;

}  // namespace tesh::bramel::plugin::sivray::effects
