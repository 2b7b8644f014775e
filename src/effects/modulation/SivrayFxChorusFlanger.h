// "Chorus/Flanger": a short delay swept by a triangle, with feedback on the upper range of its Depth knob.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a flanger: each channel adds an inverted, moving tap of its own line. The right triangle leads the left one.
struct ChorusFlangerLaw {
  static constexpr unsigned kLineLength = 1024;

  static constexpr LawParts kParts{.start = Knobs{},
                                   .otherRestart = kMarloRestart,
                                   .aims = true,
                                   .glides = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleepsAfter = kLineLength};

  struct Settings {
    std::int32_t lfoStep;   ///< Phase step per sample of a 32-bit phase that wraps.
    std::int32_t feedback;  ///< Q15.
    std::int32_t wet;       ///< Q15.
  };

  struct Channel {
    /// The last entry is always a copy of entry 0, so that every sample has its neighbour beside it.
    std::array<std::int16_t, kLineLength + 1> line{};
    std::int32_t follow = 0;  ///< The smoothed triangle, 0 to 32767.
  };

  /// Delay at the foot of the triangle (3 samples) and per unit of the triangle, 16 fractional bits: up to 336.5
  /// samples.
  static constexpr std::int32_t kLeastDelay = 3 << 16;
  static constexpr std::int32_t kDelayPerTriangle = 667;

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Clears the lines; the write position is kept.
  void reset(const Settings&) {
    leftChannel = {};
    rightChannel = {};
    phase = 0;
  }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  void aim(const Settings& to, bool) { lfoStep = to.lfoStep; }
  static bool fitsLanes(const Settings&) { return true; }
  static const RunInLanes<ChorusFlangerLaw> runBaseline;
  static const RunInLanes<ChorusFlangerLaw> runAvx2;

  bool isSilent(unsigned count) const {
    return isZeroBefore(leftChannel.line.data(), kLineLength, writeIndex, count) &&
           isZeroBefore(rightChannel.line.data(), kLineLength, writeIndex, count);
  }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  void eachSmoothed(const Settings& to, auto&& visit) {
    visit(wet, to.wet);
    visit(feedback, to.feedback);
  }

  void moveIndex(unsigned count) { writeIndex = (writeIndex + count) & (kLineLength - 1); }

  SmoothedValue feedback;
  SmoothedValue wet;
  std::int32_t phase = 0;
  std::int32_t lfoStep = 0;  ///< For the lanes.
  std::uint32_t writeIndex = 0;
  Channel leftChannel;
  Channel rightChannel;
};

extern template class TwoKnobEffect<ChorusFlangerLaw>;

/// Edit1 is the speed, Edit2 the depth.
class SivrayFxChorusFlanger : public TwoKnobEffect<ChorusFlangerLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
