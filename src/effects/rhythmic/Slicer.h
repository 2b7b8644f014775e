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
  static constexpr Knobs kStart{72, 64};
  static constexpr bool kFollowsTempo = true;
  static constexpr int kOtherRestart = kRhythmicRestart;

  static constexpr std::int32_t kPhaseTop = 2147483647;

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
    phaseUp = 0;
    phaseDown = kPhaseTop;
    gate.shut();
  }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return true; }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  std::int32_t phaseUp = 0;
  std::int32_t phaseDown = kPhaseTop;
  BeatGain<0, kSmoothing> gate;

 private:
  std::int32_t nextOpening(const Settings& to);
};

extern template class TwoKnobEffect<Slicer>;

}  // namespace tesh::bramel::plugin::sivray::effects
