// The auto pan's step, from its note value and the tempo.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/Q60393Autopan.h"

#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

int Q60393Autopan::setEdit(unsigned index, int value) {
  if (index != 0) {
    return setShape(index, value);
  }
  freqKnob = value & 127;
  updateStep();
  return freqKnob;
}

void Q60393Autopan::setTempo(int tempoTenths) {
  bpm = static_cast<float>(tempoTenths) / 10.0F;
  updateStep();
}

void Q60393Autopan::updateStep() { lfoStep = tempoStep(freqKnob, bpm); }

}  // namespace tesh::bramel::plugin::sivray::effects
