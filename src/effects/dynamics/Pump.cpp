// The settings of the pump and the shape of its swell.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Pump.h"

#include "effects/dynamics/PumpTables.h"
#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Falls from 1.0 at both ends of the phase to 0 at mid-cycle, times `gain` (Q15).
std::int32_t parabola(std::int32_t phase, std::int32_t gain) {
  const std::int64_t square = (static_cast<std::int64_t>(phase) * phase) >> 47;
  return static_cast<std::int32_t>((square * gain) >> 15);
}

/// Close to 0 in the first half of the cycle and close to 1.0 in the second.
std::int32_t secondHalf(std::int32_t up, std::int32_t down) { return ((down >> 16) + 32768 + (up >> 16)) >> 1; }

}  // namespace

Pump::Settings Pump::settingsOf(const Knobs& knobs) {
  const int shape = 127 - knobs.edit2;
  return {tempoStep(knobs), valueAt(pumpAttackTable, shape), valueAt(pumpLevelTable, shape)};
}

/// Moves the phases by one sample and returns where the gain goes.
std::int32_t Pump::nextOpening(const Settings& to) {
  phaseUp = wrapAdd(phaseUp, to.lfoStep);
  phaseDown = wrapSub(phaseDown, to.lfoStep);
  return std::min(parabola(phaseUp, to.attackGain), secondHalf(phaseUp, phaseDown));
}

void Pump::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  gain.step(nextOpening(to), to.level, left, right);
}

void Pump::skip(const Settings& to, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    gain.advance(nextOpening(to), to.level);
  }
}

template class TwoKnobEffect<Pump>;

}  // namespace tesh::bramel::plugin::sivray::effects
