// Pump: a gain that is held down in the first half of each beat and swells in the second.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Pump": Edit1 is the note value, Edit2 the attack. It has no immediate mode.
class Pump {
 public:
  static constexpr bool kAnswersRhythmicRestart = true;

  Pump();

  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 note value, 1 attack; the value is masked to 7 bits and given back. Other indices give 0. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  /// Tempo in tenths of a beat per minute; 0 and below stop the oscillator. Any thread.
  void setTempo(int tempoTenths) SIVRAY_NONBLOCKING;

  void reset() SIVRAY_NONBLOCKING;

 private:
  void updateStep();

  Relaxed<int> freqKnob = 72;
  Relaxed<float> bpm = 120.0F;
  Relaxed<std::int32_t> lfoStep;
  Relaxed<std::int32_t> attackGain;
  Relaxed<std::int32_t> level;
  std::int32_t phaseUp = -2147483647;
  std::int32_t phaseDown = 0;
  std::int32_t levelState = 0;
  SmoothedValue envelope;
  bool restart = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
