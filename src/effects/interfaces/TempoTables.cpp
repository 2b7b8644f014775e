// The step of an oscillator that is locked to the tempo.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/TempoTables.h"

#include <limits>

namespace tesh::bramel::plugin::sivray::effects {

std::int32_t tempoStep(int knob, float bpm) {
  if (!(bpm > 0.0F)) {
    return 0;
  }
  const float length = static_cast<float>(kNoteLengths[lfoNoteIndex(knob)]);
  const float samples = length / bpm;
  const float cycles = 2.0F / samples;
  const float step = cycles * 2147483648.0F;
  return step < 2147483648.0F ? static_cast<std::int32_t>(step) : std::numeric_limits<std::int32_t>::max();
}

}  // namespace tesh::bramel::plugin::sivray::effects
