// "Pump": a gain that is held down in the first half of each note and swells in the second, as a compressor does that
// listens to a bass drum.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/BeatGain.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the note value, Edit2 the attack. It has no immediate mode. A tempo of 0 or below stops it.
struct Pump {
  static constexpr LawParts kParts{.start = Knobs{72, 0},
                                   .followsTempo = true,
                                   .otherRestart = kRhythmicRestart,
                                   .aims = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleeps = true};

  /// Gain while the sound is held down: 0.109, the square of the linear curve at 42.
  static constexpr std::int32_t kFloor = cofu::core::mul15(linearTable[42], linearTable[42]);

  /// Smoothing of the gain: 0.0105 per sample, the square curve at 13. A time constant of 96 samples (2 ms).
  static constexpr std::int32_t kSmoothing = squareTable[13];

  struct Settings {
    std::int32_t lfoStep;     ///< Of a 32-bit phase that wraps, per sample.
    std::int32_t attackGain;  ///< On the parabola, Q15.
    std::int32_t level;       ///< Make-up, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Starts the note afresh; the make-up level stays.
  void reset(const Settings&) {
    phase = kPhaseStart;
    gain.shut();
  }
  void aim(const Settings& to, bool) { now = to; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  bool fitsLanes(const Settings& to) const { return gain.fitsLanes(to.level); }
  static const RunInLanes<Pump> runBaseline;
  static const RunInLanes<Pump> runAvx2;

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return true; }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  static constexpr std::int32_t kPhaseStart = -2147483647;

  Settings now{};
  std::int32_t phase = kPhaseStart;
  BeatGain gain;
};

extern template class TwoKnobEffect<Pump>;

}  // namespace tesh::bramel::plugin::sivray::effects
