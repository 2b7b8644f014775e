// "Pump" and "Slicer": a gain that opens and closes with the beat. Neither has an immediate mode, and a tempo of 0 or
// less stops them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Common to both: an oscillator, the gain that it opens, and a make-up level for the time while it is closed. Each
/// effect adds
///   static constexpr std::int32_t kFloor;      // gain while it is closed, Q15
///   static constexpr std::int32_t kSmoothing;  // share per sample by which the gain follows its target, Q15
/// BeatGainStep.h has the law. The settings of an effect include `lfoStep`, the phase step per sample of a 32-bit phase
/// that wraps, and the make-up `level`, Q15, of up to 4.0.
template <typename EffectSettings>
struct BeatGain {
  using Settings = EffectSettings;

  /// The level keeps 0.9925 of itself per sample, a time constant of 132 samples (3 ms).
  static constexpr OnePole kLevelGlide{32520, 247};

  static constexpr LawParts partsFrom(const Knobs& start) {
    return {.start = start,
            .followsTempo = true,
            .otherRestart = kRhythmicRestart,
            .aims = true,
            .lanes = LaneParts::baselineAndAvx2,
            .sleepsAfter = 0};
  }

  /// Restarts the beat with the gain closed; the make-up level is kept.
  void restartAt(std::int32_t start) {
    phase = start;
    opening.setNow(0);
  }
  void aim(const Settings& to, bool) { now = to; }

  /// Whether the level is at rest, and the gain can run in lanes, with openings of -1 to 1.0.
  bool fitsLanes(const Settings& to) const { return nextLevel(to) == level && opening.value() <= kOneQ15; }

  bool isSilent(unsigned) const { return true; }

  std::int32_t nextLevel(const Settings& to) const {
    return static_cast<std::int32_t>(kLevelGlide.next(level, to.level));
  }

  Settings now{};
  std::int32_t phase = 0;
  SmoothedValue opening;   ///< Q15.
  std::int32_t level = 0;  ///< Smoothed.
};

struct PumpSettings {
  std::int32_t lfoStep;
  std::int32_t attackGain;  ///< Gain on the parabola, Q15.
  std::int32_t level;
};

/// Edit1 is the note value, Edit2 the attack. The gain is held down in the first half of each note and rises in the
/// second, like a compressor that is keyed by a bass drum.
struct Pump : BeatGain<PumpSettings> {
  static constexpr LawParts kParts = partsFrom({72, 0});

  /// Gain while the sound is held down: 0.109, the square of the linear curve at 42.
  static constexpr std::int32_t kFloor = cofu::core::mul15(linearTable[42], linearTable[42]);

  /// Smoothing of the gain: 0.0105 per sample, the square curve at 13. A time constant of 96 samples (2 ms).
  static constexpr std::int32_t kSmoothing = squareTable[13];

  static constexpr std::int32_t kPhaseStart = -2147483647;

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) { restartAt(kPhaseStart); }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static const RunInLanes<Pump> runBaseline;
  static const RunInLanes<Pump> runAvx2;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;
};

extern template class TwoKnobEffect<Pump>;

struct SlicerSettings {
  std::int32_t lfoStep;
  std::int32_t holdOffset;  ///< Phase between the two saws.
  std::int32_t edge;        ///< Threshold for the sum of the saws while the gate is open, in 2^-16 of a cycle.
  std::int32_t level;
};

/// A gate. Edit1 is the note value of a cycle, Edit2 the share of it during which the gate is closed.
struct Slicer : BeatGain<SlicerSettings> {
  static constexpr LawParts kParts = partsFrom({72, 64});

  static constexpr std::int32_t kFloor = 0;

  /// Smoothing of the gate: 0.0075 per sample, the square curve at 11. A time constant of 134 samples (3 ms).
  static constexpr std::int32_t kSmoothing = squareTable[11];

  static constexpr std::int32_t kPhaseTop = 2147483647;

  /// The edge at knob 0.
  static constexpr std::int32_t kEdgeWithoutHold = -65536;

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) { restartAt(0); }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  /// Without a hold, the two saws may both be at their maximum, where they sum to 2.0.
  bool fitsLanes(const Settings& to) const { return to.edge != kEdgeWithoutHold && BeatGain::fitsLanes(to); }
  static const RunInLanes<Slicer> runBaseline;
  static const RunInLanes<Slicer> runAvx2;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;
};

extern template class TwoKnobEffect<Slicer>;

}  // namespace tesh::bramel::plugin::sivray::effects
