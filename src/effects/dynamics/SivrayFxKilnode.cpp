// How the tube stage is driven.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/SivrayFxKilnode.h"

#include <memory>

#include "effects/dynamics/Kilnode.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

SivrayFxKilnode::SivrayFxKilnode() : adapter(std::make_unique<fxkit::Kilnode>()) {}

int SivrayFxKilnode::setParameter(unsigned index, int value) {
  if (index != kEdit1) {
    return 0;
  }
  const int knob = knobOf(value);
  adapter.setParameter(0, static_cast<float>(knob) * kKnobToUnit);
  return knob;
}

void SivrayFxKilnode::setImmediate(bool on) {
  if (on) {
    adapter.reset();
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
