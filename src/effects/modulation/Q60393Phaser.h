// "Phaser": four all-pass stages a channel on a mono input, moved by a triangle.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/interfaces/StereoWords.h"
#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/modulation/TriangleLfo.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the speed, Edit2 the depth. Models first-order all-pass stages whose common coefficient an oscillator
/// sweeps, with feedback from the second stage; the right oscillator runs ahead of the left one.
struct Q60393Phaser {
  static constexpr LawParts kParts{.start = Knobs{30, 63}, .resetTakesPending = true, .glides = true, .sleeps = true};

  struct Settings {
    std::int32_t lfoStep;  ///< Of a 32-bit phase that wraps, per sample.
    std::int32_t depth;    ///< How far the oscillator moves the coefficient, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) {
    phase = StereoWords::of(0, kRightPhaseLead);
    stages = {};
  }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const SIVRAY_NONBLOCKING;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  void eachSmoothed(const Settings& to, auto&& visit) { visit(depth, to.depth); }

  SmoothedValue depth;
  StereoWords phase;
  std::array<StereoWords, 5> stages{};  ///< The input of the first all-pass and the outputs of all four.
};

extern template class TwoKnobEffect<Q60393Phaser>;

}  // namespace tesh::bramel::plugin::sivray::effects
