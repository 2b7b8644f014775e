// What pump and slicer share: a gain that opens and shuts with the beat, and a level that makes up for the shut part.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/Silence.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Gain and level without their oscillator. BeatGainStep.h moves the gain and applies both to the sound.
struct BeatGain {
  static constexpr std::int32_t kOpen = kOneQ15;

  SmoothedValue envelope;  ///< Follows the opening, Q15.
  std::int32_t level = 0;  ///< Smoothed make-up level, Q15; it may exceed 1.0 fourfold.

  /// Shuts the gain; the level stays.
  void shut() { envelope.setNow(0); }

  /// Whether the gain runs in lanes with openings of -1 to `kOpen`.
  bool fitsLanes(std::int32_t levelTo) const { return nextLevel(level, levelTo) == level && envelope.value() <= kOpen; }

  void moveLevel(std::int32_t levelTo) { level = nextLevel(level, levelTo); }
  void skipLevel(std::int32_t levelTo, unsigned count) {
    moveToRest(level, count, [levelTo](std::int32_t& moved) { moved = nextLevel(moved, levelTo); });
  }

 private:
  /// The level keeps 0.9925 of itself per sample, a time constant of 132 samples (3 ms), and takes the rest from its
  /// target; Q15.
  static constexpr std::int64_t kLevelKept = 32520;
  static constexpr std::int64_t kLevelTargetShare = 247;

  static std::int32_t nextLevel(std::int32_t level, std::int32_t levelTo) {
    return static_cast<std::int32_t>((level * kLevelKept + levelTo * kLevelTargetShare) >> 15);
  }
};

}  // namespace tesh::bramel::plugin::sivray::effects
