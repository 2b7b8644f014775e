// The settings and the law of the room reverb.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/SivrayFxReverb.h"

#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// The louder the wet sound, the more enters the network: an eighth of full scale at level 0, a quarter at full level.
constexpr std::int32_t inputGainFor(std::int32_t level) { return (level >> 3) + 4096; }

}  // namespace

RoomReverbLaw::Settings RoomReverbLaw::settingsOf(const Knobs& knobs) {
  return {feedbackOf(knobs.edit1), valueAt(squareTable, knobs.edit2)};
}

void RoomReverbLaw::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  const std::int32_t wetLevel = level.value();
  const Output wet = stepNetwork(mul15(left + right, inputGainFor(wetLevel)), feedback.value());
  right = static_cast<std::int16_t>(saturate(right + mul15(wetLevel, wet.late)));
  left = static_cast<std::int16_t>(saturate(left + mul15(mul15(wet.early, wetLevel), kEarlyGain)));
}

template class TwoKnobEffect<RoomReverbLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
