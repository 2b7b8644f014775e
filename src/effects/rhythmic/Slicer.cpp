// The settings of the slicer and its two saws.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/rhythmic/Slicer.h"

#include "effects/interfaces/TempoTables.h"
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
  return {tempoStep(knobs), wrapAdd(held, kPhaseTop), shutAt >= 0 ? shutAt - 65536 : shutAt,
          valueAt(slicerLevelTable, knobs.edit2)};
}

/// Two saws run against each other. Their sum is close to 1.0 while the gate is open and close to 0 while it is shut.
std::int32_t Slicer::nextOpening(const Settings& to) {
  phaseUp = wrapAdd(phaseUp, to.lfoStep);
  phaseDown = wrapSub(phaseDown, to.lfoStep);
  return ((phaseDown >> 16) + (wrapAdd(to.holdOffset, phaseUp) >> 16) - to.edge) >> 1;
}

void Slicer::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  gate.step(nextOpening(to), to.level, left, right);
}

void Slicer::skip(const Settings& to, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    gate.advance(nextOpening(to), to.level);
  }
}

template class TwoKnobEffect<Slicer>;

}  // namespace tesh::bramel::plugin::sivray::effects
