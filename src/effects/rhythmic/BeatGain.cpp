// The settings of pump and slicer.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/rhythmic/BeatGain.h"

#include <cmath>

#include "effects/interfaces/TempoTables.h"
#include "effects/rhythmic/BeatGainStep.h"
#include "effects/rhythmic/BeatTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// The longest distinct hold: with 127 the gate would never open.
constexpr int kLongestHold = 126;

/// Make-up gain of the pump, Q15: 2^(1/3) at the fastest attack, up a parabola in octaves to 2^(5/3).
const auto pumpLevelTable = tableOf<std::int32_t>([](int attackKnob) {
  const double position = static_cast<double>(attackKnob) / kTopKnob;
  return kOneQ15 * std::exp2((1.0 + 4.0 * position * position) / 3.0);
});

}  // namespace

Pump::Settings Pump::settingsOf(const Knobs& knobs) {
  return {tempoStep(knobs), valueAt(pumpAttackTable, kTopKnob - knobs.edit2), valueAt(pumpLevelTable, knobs.edit2)};
}

void Pump::step(const Settings&, std::int16_t& left, std::int16_t& right) { stepBeat(*this, left, right); }

const RunInLanes<Pump> Pump::runBaseline = runBeat<Samples128>;

void Pump::skip(const Settings&, unsigned count) { skipBeat(*this, count); }

template class TwoKnobEffect<Pump>;

Slicer::Settings Slicer::settingsOf(const Knobs& knobs) {
  // Share of the cycle during which the gate is closed, 32 fractional bits.
  const std::int64_t share =
      (std::int64_t{valueAt(linearTable, std::min(knobs.edit2, kLongestHold))} * 2 * kPhaseTop) >> 15;
  const auto held = static_cast<std::int32_t>(static_cast<std::uint32_t>(share));
  const std::int32_t shutAt = held >> 16;
  return {tempoStep(knobs), wrapAdd(held, kPhaseTop), shutAt >= 0 ? shutAt + kEdgeWithoutHold : shutAt,
          valueAt(slicerLevelTable, knobs.edit2)};
}

void Slicer::step(const Settings&, std::int16_t& left, std::int16_t& right) { stepBeat(*this, left, right); }

const RunInLanes<Slicer> Slicer::runBaseline = runBeat<Samples128>;

void Slicer::skip(const Settings&, unsigned count) { skipBeat(*this, count); }

template class TwoKnobEffect<Slicer>;

}  // namespace tesh::bramel::plugin::sivray::effects
