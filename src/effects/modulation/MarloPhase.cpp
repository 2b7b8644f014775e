// The law of the Marlo phase effect.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloPhase.h"

#include "effects/modulation/MarloLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

void MarloPhase::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  sweep.advance(to);
  lines.step(left, right, [this](float inLeft, float inRight, float& outLeft, float& outRight) {
    const float at = lines.writePosition();
    outLeft = limited((lines.leftLine.read(sweep.left() * kDepth + at + kBase) + inLeft) * kSumGain);
    outRight = limited((lines.rightLine.read(sweep.right() * kDepth + at + kBase) + inRight) * kSumGain);
  });
}

unsigned MarloPhase::runSse2(MarloPhase& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runMarloPhase<MarloFour>(law, left, right, count);
}

template class TwoKnobEffect<MarloPhase>;

}  // namespace tesh::bramel::plugin::sivray::effects
