// "Tremolo" and "Auto Pan": a triangle oscillator modulates the gain of a mono signal.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <limits>

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models an amplitude modulator: the cube of a smoothed triangle, mixed with a constant gain. Each effect adds
///   static constexpr std::int32_t kSpread;  // how far the right oscillator runs ahead; half a cycle is 2^31
/// GainModulatorStep.h has the law.
struct GainModulator {
  static constexpr std::int32_t kTop = std::numeric_limits<std::int32_t>::max();

  /// Half of the triangle's height, 31 fractional bits.
  static constexpr std::int32_t kHalf = 1 << 30;

  struct Settings {
    std::int32_t lfoStep;   ///< Phase step per sample of a 32-bit phase that wraps.
    std::int32_t flatness;  ///< Q15: 32767 gives a constant gain, 0 full modulation.
  };

  static constexpr LawParts partsOf(bool followsTempo) {
    return {.start = Knobs{72, 63},
            .followsTempo = followsTempo,
            .resetTakesPending = true,
            .aims = true,
            .glides = true,
            .lanes = LaneParts::baselineAndAvx2,
            .sleepsAfter = 0};
  }

  /// The flatness for a Depth knob of 0 to 127.
  static std::int32_t flatnessOf(int depthKnob);

  void reset(const Settings&) {
    phase = kTop;
    smoothLeft = -kHalf;
    smoothRight = -kHalf;
  }
  void aim(const Settings& to, bool) { lfoStep = to.lfoStep; }

  /// If a triangle stops at its maximum, its smoothed value reaches it too, and then the gain does not fit a lane.
  bool fitsLanes(const Settings&) const { return smoothLeft < kHalf && smoothRight < kHalf; }

  bool isSilent(unsigned) const { return true; }

  void eachSmoothed(const Settings& to, auto&& visit) { visit(flatness, to.flatness); }

  SmoothedValue flatness;
  std::int32_t lfoStep = 0;
  std::int32_t phase = kTop;
  std::int32_t smoothLeft = -kHalf;  ///< The smoothed triangle, 31 fractional bits, less kHalf.
  std::int32_t smoothRight = -kHalf;
};

/// "Tremolo": a free-running oscillator modulates the gain of both channels. Edit1 is the speed (0.87 to 20 Hz), Edit2
/// the depth. The output is mono.
struct Q60393Tremolo : GainModulator {
  static constexpr LawParts kParts = partsOf(false);

  static constexpr std::int32_t kSpread = 0;

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static const RunInLanes<Q60393Tremolo> runBaseline;
  static const RunInLanes<Q60393Tremolo> runAvx2;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;
};

extern template class TwoKnobEffect<Q60393Tremolo>;

/// "Auto Pan": two tempo-synchronised oscillators, half a cycle apart, modulate the gains of the two channels, which
/// moves a mono signal from side to side. Edit1 is the note value, Edit2 the depth. A tempo of 0 or less stops it.
struct Q60393Autopan : GainModulator {
  static constexpr LawParts kParts = partsOf(true);

  static constexpr std::int32_t kSpread = linearTable[kTopKnob] << 16;  ///< Half a cycle less 2^16.

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static const RunInLanes<Q60393Autopan> runBaseline;
  static const RunInLanes<Q60393Autopan> runAvx2;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;
};

extern template class TwoKnobEffect<Q60393Autopan>;

}  // namespace tesh::bramel::plugin::sivray::effects
