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
  static constexpr Knobs kStart{72, 0};
  static constexpr bool kFollowsTempo = true;
  static constexpr int kOtherRestart = kRhythmicRestart;

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
  static unsigned runSse2(Pump& law, std::int16_t* left, std::int16_t* right, unsigned count) SIVRAY_NONBLOCKING;
  static unsigned runAvx2(Pump& law, std::int16_t* left, std::int16_t* right, unsigned count) SIVRAY_NONBLOCKING;

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return true; }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  static constexpr std::int32_t kPhaseStart = -2147483647;

  /// Where the gain goes at a phase, Q15: along the parabola, but not above the second half.
  template <typename Words>
  Words openingAt(Words at) const {
    return smaller(parabola(at), secondHalf(at));
  }

  Settings now{};
  std::int32_t phase = kPhaseStart;
  BeatGain gain;

 private:
  /// Falls from 1.0 at both ends of the phase to 0 at mid-cycle, times the gain of the attack.
  template <typename Words>
  Words parabola(Words at) const {
    const Words distance = magnitude(at);
    return product<15>(product<47>(distance, distance), Words::all(now.attackGain));
  }

  /// Close to 0 in the first half of the cycle and close to 1.0 in the second: the sum of two saws that run against
  /// each other.
  template <typename Words>
  static Words secondHalf(Words up) {
    const Words down = Words::all(kPhaseStart) - up;
    const Words sum = down.template shiftedRight<16>() + Words::all(32768) + up.template shiftedRight<16>();
    return sum.template shiftedRight<1>();
  }
};

extern template class TwoKnobEffect<Pump>;

}  // namespace tesh::bramel::plugin::sivray::effects
