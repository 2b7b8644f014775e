// The settings of tremolo and auto pan, and their law.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/GainModulator.h"

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TempoTables.h"
#include "effects/modulation/GainModulatorStep.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Samples of the tremolo's cycle: 3 * (distance of the knob from 127, squared, + 735), from 2205 (20 Hz) up.
constexpr std::int32_t kCycleScale = 3;
constexpr std::int32_t kCycleBase = 735;

}  // namespace

std::int32_t GainModulator::flatnessOf(int depthKnob) { return kFullScale - valueAt(linearTable, depthKnob); }

Q60393Tremolo::Settings Q60393Tremolo::settingsOf(const Knobs& knobs) {
  const int below = kTopKnob - knobs.edit1;
  const std::int32_t cycle = kCycleScale * (below * below + kCycleBase);
  return {2 * (kTop / cycle), flatnessOf(knobs.edit2)};
}

void Q60393Tremolo::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runModulated<OneSample>(*this, &left, &right, 1);
}

const RunInLanes<Q60393Tremolo> Q60393Tremolo::runBaseline = runModulated<Samples128>;

void Q60393Tremolo::skip(const Settings&, unsigned count) { skipModulated(*this, count); }

Q60393Autopan::Settings Q60393Autopan::settingsOf(const Knobs& knobs) {
  return {tempoStep(knobs), flatnessOf(knobs.edit2)};
}

void Q60393Autopan::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runModulated<OneSample>(*this, &left, &right, 1);
}

const RunInLanes<Q60393Autopan> Q60393Autopan::runBaseline = runModulated<Samples128>;

void Q60393Autopan::skip(const Settings&, unsigned count) { skipModulated(*this, count); }

template class TwoKnobEffect<Q60393Tremolo>;
template class TwoKnobEffect<Q60393Autopan>;

}  // namespace tesh::bramel::plugin::sivray::effects
