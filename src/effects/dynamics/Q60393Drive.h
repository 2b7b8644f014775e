// "Drive": a soft clipper whose threshold falls as the drive rises, with feedback of the last output.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/StereoWords.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the drive, Edit2 the output level. Models an amplifier stage: linear up to the threshold, a parabola above.
struct Q60393Drive {
  static constexpr LawParts kParts{
      .start = Knobs{63, 100}, .resetTakesPending = true, .glides = true, .lanes = LaneParts::avx2, .sleepsAfter = 0};

  /// How strongly the excess over the threshold is bent: 0.8 in Q15.
  static constexpr std::int32_t kBend = 26213;

  /// Feedback of the last output at full drive: 0.73 in Q15.
  static constexpr std::int32_t kFeedback = 23919;

  /// All Q15.
  struct Settings {
    std::int32_t drive;
    std::int32_t level;
    std::int32_t threshold;
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// The threshold starts from 0, so the first samples are clipped most.
  void reset(const Settings&) {
    threshold.setNow(0);
    preEmphasis = {};
    lastOutput = {};
  }
  void step(const Settings&, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  static bool fitsLanes(const Settings&) { return true; }
  static const RunInLanes<Q60393Drive> runAvx2;

  bool isSilent(unsigned) const { return preEmphasis.isZero() && lastOutput.isZero(); }
  void skip(const Settings&, unsigned) {}

  void eachSmoothed(const Settings& to, auto&& visit) {
    visit(drive, to.drive);
    visit(level, to.level);
    visit(threshold, to.threshold);
  }

  SmoothedValue drive;
  SmoothedValue level;
  SmoothedValue threshold;
  StereoWords preEmphasis;
  StereoWords lastOutput;
};

extern template class TwoKnobEffect<Q60393Drive>;

}  // namespace tesh::bramel::plugin::sivray::effects
