// What pump and slicer share: a gain that opens and shuts with the beat, and a level that makes up for the shut part.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// `kFloor` is the gain that is left while it is shut, `kSmoothing` the share per sample by which the gain follows its
/// target; both Q15.
template <std::int32_t kFloor, std::int32_t kSmoothing>
struct BeatGain {
  SmoothedValue envelope;
  std::int32_t level = 0;  ///< Smoothed make-up level, Q15; it may exceed 1.0 fourfold.

  /// Shuts the gain; the level stays.
  void shut() { envelope.setNow(0); }

  /// Moves gain and level by one sample. `opening` (Q15) is where the gain goes.
  void advance(std::int32_t opening, std::int32_t levelTo) {
    const std::int64_t sum = level * kLevelKept + levelTo * kLevelTargetShare;
    level = static_cast<std::int32_t>(sum >> 15);
    envelope.glide(opening, kSmoothing);
  }

  /// One sample of both channels.
  void step(std::int32_t opening, std::int32_t levelTo, std::int16_t& left, std::int16_t& right) {
    using namespace cofu::core;
    advance(opening, levelTo);
    const std::int32_t e = envelope.value();
    const std::int32_t gain = e - mul15(e, kFloor) + kFloor;
    left = scaled(gain, left);
    right = scaled(gain, right);
  }

 private:
  /// The level keeps 0.9925 of itself per sample, a time constant of 132 samples (3 ms), and takes the rest from its
  /// target; Q15.
  static constexpr std::int64_t kLevelKept = 32520;
  static constexpr std::int64_t kLevelTargetShare = 247;

  std::int16_t scaled(std::int32_t gain, std::int32_t in) const {
    using namespace cofu::core;
    const std::int64_t out = (static_cast<std::int64_t>(mul15(gain, in)) * level) >> 15;
    return static_cast<std::int16_t>(std::clamp<std::int64_t>(out, -kFullScale, kFullScale));
  }
};

}  // namespace tesh::bramel::plugin::sivray::effects
