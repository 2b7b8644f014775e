// What tremolo and auto pan share: a mono signal whose two output gains follow a smoothed, cubed oscillator.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The common part of two effect cores, which add how Edit1 makes the oscillator's step.
class GainModulator {
 public:
  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;
  void reset() SIVRAY_NONBLOCKING;

  bool immediate = false;

 protected:
  /// `spreadKnob` sets how far the right oscillator stands ahead: 0 for none, 127 for half a cycle.
  explicit GainModulator(int spreadKnob);

  /// Index 1 depth, 2 wave form (limited to 0 .. 4), 3 spread, 4 smoothing (masked to 7 bits). Gives the value that was
  /// taken, 0 for other indices. Any thread.
  int setShape(unsigned index, int value) SIVRAY_NONBLOCKING;

  /// Phase step per sample.
  Relaxed<std::int32_t> lfoStep;

 private:
  enum LfoType : std::int32_t { kRisingSaw, kTriangle, kSquareUp, kFallingSaw, kSquareDown };

  template <LfoType kType, bool kResting>
  void render(std::int16_t* left, std::int16_t* right, unsigned count);

  template <LfoType kType>
  void renderAs(std::int16_t* left, std::int16_t* right, unsigned count);

  Relaxed<std::int32_t> flatnessTarget;
  Relaxed<std::int32_t> lfoType;
  Relaxed<std::int32_t> spread;
  Relaxed<std::int32_t> lfoCoefficient;
  SmoothedValue flatness;
  std::int32_t phaseUp = 2147483647;
  std::int32_t phaseDown = 2147483647;
  bool restart = true;
  std::int64_t smoothLeft = 0;
  std::int64_t smoothRight = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
