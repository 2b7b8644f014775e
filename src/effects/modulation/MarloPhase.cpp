// The law of the Marlo phase effect.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloPhase.h"

#include "effects/modulation/MarloStep.h"

namespace tesh::bramel::plugin::sivray::effects {

void MarloPhase::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runMarloPhase<MarloOne>(*this, &left, &right, 1);
}

void MarloPhase::skip(const Settings& to, unsigned count) {
  skipSweep(sweep, to, count);
  lines.skip(count);
}

unsigned MarloPhase::runBaseline(MarloPhase& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runMarloPhase<MarloIn<cofu::registers::Registers128>>(law, left, right, count);
}

template class TwoKnobEffect<MarloPhase>;

}  // namespace tesh::bramel::plugin::sivray::effects
