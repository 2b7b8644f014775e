// "Slicer": a gate that opens and shuts with the beat.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Slicer": Edit1 is the note value of a cycle, Edit2 the share of it during which the gate stays shut. It
/// has no immediate mode.
class Slicer {
 public:
  static constexpr bool kAnswersRhythmicRestart = true;

  Slicer();

  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 note value, 1 hold time, 2 depth, 4 smoothing of the gate; the value is masked to 7 bits and given back.
  /// Index 3 stands for an output level that the hold time decides instead: it changes nothing. Others give 0. Any
  /// thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  /// Tempo in tenths of a beat per minute; 0 and below stop the oscillator. Any thread.
  void setTempo(int tempoTenths) SIVRAY_NONBLOCKING;

  /// Restarts the cycle at the next sample with the gate shut; the make-up level stays.
  void reset() SIVRAY_NONBLOCKING;

 private:
  void updateStep();
  void updateHold();
  void render(StereoBlock block, unsigned start, unsigned end);

  Relaxed<int> freqKnob{72};
  Relaxed<int> holdKnob{64};
  Relaxed<float> bpm{120.0F};
  Relaxed<std::int32_t> lfoStep;
  Relaxed<std::int32_t> holdOffset;
  Relaxed<std::int32_t> edge;
  Relaxed<std::int32_t> level;
  Relaxed<std::int32_t> floor;  ///< What passes the shut gate, Q15.
  Relaxed<std::int32_t> lfoCoefficient;
  std::int32_t phaseUp = 0;
  std::int32_t phaseDown = 2147483647;
  SmoothedValue envelope;
  std::int32_t levelState = 0;
  bool restart = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
