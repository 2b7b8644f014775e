// The settings of the pump and the shape of its swell.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Pump.h"

#include "effects/dynamics/PumpStep.h"
#include "effects/dynamics/PumpTables.h"
#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

Pump::Settings Pump::settingsOf(const Knobs& knobs) {
  const int shape = kTopKnob - knobs.edit2;
  return {tempoStep(knobs), valueAt(pumpAttackTable, shape), valueAt(pumpLevelTable, shape)};
}

void Pump::step(const Settings&, std::int16_t& left, std::int16_t& right) { stepBeat(*this, left, right); }

const RunInLanes<Pump> Pump::runBaseline = runBeat<Samples128>;

void Pump::skip(const Settings&, unsigned count) { skipBeat(*this, count); }

template class TwoKnobEffect<Pump>;

}  // namespace tesh::bramel::plugin::sivray::effects
