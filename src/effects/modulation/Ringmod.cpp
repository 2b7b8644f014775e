// The settings and the law of the ring modulator.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/Ringmod.h"

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/modulation/RingmodStep.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Scale of the Frequency knob: its end, 12287, means 12287 * 2^15 of a phase of 2^32 per sample, 4134 Hz.
constexpr std::int32_t kFrequencyScale = 12288;

}  // namespace

Ringmod::Settings Ringmod::settingsOf(const Knobs& knobs) {
  return {mul15(valueAt(linearTable, knobs.edit1), kFrequencyScale), valueAt(linearTable, knobs.edit2)};
}

void Ringmod::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  stepAs<OneSample>(*this, &left, &right);
}

const RunInLanes<Ringmod> Ringmod::runBaseline = runLanes<Samples128>;

void Ringmod::skip(const Settings&, unsigned count) {
  phase = wrapAdd(phase, wrapMul(frequency.state, static_cast<std::int32_t>(count)));
}

template class TwoKnobEffect<Ringmod>;

}  // namespace tesh::bramel::plugin::sivray::effects
