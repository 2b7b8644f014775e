// How knob values and restarts reach the hall.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/SivrayFxReverbSmoothHallAdapter.h"

#include <memory>

#include "effects/interfaces/KnobTables.h"
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"

namespace tesh::bramel::plugin::sivray::effects {

SivrayFxReverbSmoothHallAdapter::SivrayFxReverbSmoothHallAdapter()
    : adapter(std::make_unique<SivrayFxReverbSmoothHall>()) {}

int SivrayFxReverbSmoothHallAdapter::setParameter(unsigned index, int value) {
  if (index != kEdit1 && index != kEdit2) {
    return 0;
  }
  adapter.setParameter(index - kEdit1, static_cast<float>(value) * kKnobToUnit);
  return value;
}

void SivrayFxReverbSmoothHallAdapter::notify(int code) {
  if (code == kRestart) {
    reset();
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
