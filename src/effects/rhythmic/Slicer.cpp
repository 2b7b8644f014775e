// The settings of the slicer and its two saws.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/rhythmic/Slicer.h"

#include "effects/interfaces/TempoTables.h"
#include "effects/rhythmic/SlicerStep.h"
#include "effects/rhythmic/SlicerTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// The longest hold that differs from the others: at 127 the gate would never open.
constexpr int kLongestHold = 126;

}  // namespace

Slicer::Settings Slicer::settingsOf(const Knobs& knobs) {
  // The share of the cycle with the gate shut, 32 fractional bits.
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
