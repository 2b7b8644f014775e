// The tremolo's speed law.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/Q60393Tremolo.h"

namespace tesh::bramel::plugin::sivray::effects {

int Q60393Tremolo::setEdit(unsigned index, int value) {
  if (index != 0) {
    return setShape(index, value);
  }
  const int knob = value & 127;
  const std::int32_t cycle = 3 * ((127 - knob) * (127 - knob) + 735);
  lfoStep = 2 * (2147483647 / cycle);
  return knob;
}

}  // namespace tesh::bramel::plugin::sivray::effects
