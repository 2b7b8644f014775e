// What tremolo and auto pan share: the gain of a mono signal follows a triangle oscillator.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <limits>

#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models an amplitude modulator: the cube of a smoothed triangle, mixed with a constant gain.
struct GainModulator {
  static constexpr bool kResetTakesPending = true;
  static constexpr std::int32_t kTop = std::numeric_limits<std::int32_t>::max();

  struct Settings {
    std::int32_t lfoStep;   ///< Of a 32-bit phase that wraps, per sample.
    std::int32_t flatness;  ///< Q15: 32767 leaves the gain alone, 0 modulates it in full.
  };

  /// The flatness for a Depth knob of 0 to 127.
  static std::int32_t flatnessOf(int depthKnob);

  void reset(const Settings&) {
    phase = kTop;
    smoothLeft = 0;
    smoothRight = 0;
  }

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return true; }

  void eachSmoothed(const Settings& to, auto&& visit) { visit(flatness, to.flatness); }

  /// One sample. The right oscillator runs `spread` ahead of the left one; half a cycle is 2^31.
  void modulate(const Settings& to, std::int32_t spread, std::int16_t& left, std::int16_t& right);

  /// Moves both oscillators by `count` samples. Without a spread they are always equal.
  void advance(const Settings& to, std::int32_t spread, unsigned count = 1);

  SmoothedValue flatness;
  std::int32_t phase = kTop;
  std::int64_t smoothLeft = 0;  ///< The smoothed triangle, 31 fractional bits.
  std::int64_t smoothRight = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
