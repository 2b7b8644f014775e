// "Phaser": four all-pass stages per channel on a mono input, swept by a triangle.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/StereoWords.h"
#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/modulation/LfoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the speed, Edit2 the depth. Models first-order all-pass stages with a common coefficient that an oscillator
/// sweeps, and feedback from the second stage. The right oscillator leads the left one.
struct Q60393Phaser {
  static constexpr LawParts kParts{.start = Knobs{30, 63},
                                   .resetTakesPending = true,
                                   .aims = true,
                                   .glides = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleepsAfter = 0};

  /// All-pass coefficient from which the oscillator subtracts its depth, Q15: 0.8926, the square of the linear curve at
  /// 120.
  static constexpr std::int32_t kManualRoot = cofu::core::mul15(linearTable[120], cofu::core::kFullScale);
  static constexpr std::int32_t kManual = cofu::core::mul15(kManualRoot, kManualRoot);

  /// Feedback, Q15: 0.5254, the convex curve at 40 times 0.99.
  static constexpr std::int32_t kResonance = cofu::core::mul15(convexTable[40], 32440);

  /// Wet gain, Q15: 0.5039, the linear curve at 64. The dry gain is the remainder of full scale.
  static constexpr std::int32_t kWet = linearTable[64];

  struct Settings {
    std::int32_t lfoStep;  ///< Phase step per sample of a 32-bit phase that wraps.
    std::int32_t depth;    ///< Range of the oscillator's change of the coefficient, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) {
    phase = StereoWords::of(0, kRightPhaseLead);
    stages = {};
  }
  void aim(const Settings& to, bool) { lfoStep = to.lfoStep; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static bool fitsLanes(const Settings&) { return true; }
  static const RunInLanes<Q60393Phaser> runBaseline;
  static const RunInLanes<Q60393Phaser> runAvx2;

  bool isSilent(unsigned) const SIVRAY_NONBLOCKING;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  void eachSmoothed(const Settings& to, auto&& visit) { visit(depth, to.depth); }

  SmoothedValue depth;
  std::int32_t lfoStep = 0;
  StereoWords phase;
  std::array<StereoWords, 5> stages{};  ///< The input of the first all-pass and the outputs of all four.
};

extern template class TwoKnobEffect<Q60393Phaser>;

}  // namespace tesh::bramel::plugin::sivray::effects
