// The settings and the law of the room reverb.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/SivrayFxReverb.h"

#include "effects/interfaces/KnobTables.h"
#include "effects/reverbs/NetworkStep.h"

namespace tesh::bramel::plugin::sivray::effects {

RoomReverbLaw::Settings RoomReverbLaw::settingsOf(const Knobs& knobs) {
  return {feedbackOf(knobs.edit1), valueAt(squareTable, knobs.edit2)};
}

void RoomReverbLaw::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  stepAs<OneSample>(*this, &left, &right);
}

const RunInLanes<RoomReverbLaw> RoomReverbLaw::runBaseline = runLanes<Samples128>;

template class TwoKnobEffect<RoomReverbLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
