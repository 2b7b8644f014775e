// What tremolo and auto pan share: the gain of a mono signal follows a triangle oscillator.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <limits>

#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models an amplitude modulator: the cube of a smoothed triangle, mixed with a constant gain. Each effect adds
///   static constexpr std::int32_t kSpread;  // how far the right oscillator runs ahead; half a cycle is 2^31
/// GainModulatorStep.h has the law.
struct GainModulator {
  static constexpr std::int32_t kTop = std::numeric_limits<std::int32_t>::max();

  /// A half of the triangle's top, 31 fractional bits.
  static constexpr std::int32_t kHalf = 1 << 30;

  struct Settings {
    std::int32_t lfoStep;   ///< Of a 32-bit phase that wraps, per sample.
    std::int32_t flatness;  ///< Q15: 32767 leaves the gain alone, 0 modulates it in full.
  };

  /// The flatness for a Depth knob of 0 to 127.
  static std::int32_t flatnessOf(int depthKnob);

  void reset(const Settings&) {
    phase = kTop;
    smoothLeft = -kHalf;
    smoothRight = -kHalf;
  }
  void aim(const Settings& to, bool) { lfoStep = to.lfoStep; }

  /// If a triangle stops at its very top, its smoothed value gets there too, and then the gain does not fit a lane.
  bool fitsLanes(const Settings&) const { return smoothLeft < kHalf && smoothRight < kHalf; }

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return true; }

  void eachSmoothed(const Settings& to, auto&& visit) { visit(flatness, to.flatness); }

  SmoothedValue flatness;
  std::int32_t lfoStep = 0;
  std::int32_t phase = kTop;
  std::int32_t smoothLeft = -kHalf;  ///< The smoothed triangle, 31 fractional bits, less a half.
  std::int32_t smoothRight = -kHalf;
};

}  // namespace tesh::bramel::plugin::sivray::effects
