// Auto pan: the two channels' gains follow an oscillator in step with the tempo, half a cycle apart.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"
#include "effects/modulation/GainModulator.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Auto Pan": Edit1 is the note value, Edit2 the depth.
class Q60393Autopan : public GainModulator {
 public:
  Q60393Autopan() : GainModulator(127) { updateStep(); }

  /// Index 0 note value, masked to 7 bits; the others as `GainModulator::setShape`. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  /// Tempo in tenths of a beat per minute; 0 and below stop the oscillator. Any thread.
  void setTempo(int tempoTenths) SIVRAY_NONBLOCKING;

 private:
  void updateStep();

  Relaxed<int> freqKnob = 72;
  Relaxed<float> bpm = 120.0F;
};

}  // namespace tesh::bramel::plugin::sivray::effects
