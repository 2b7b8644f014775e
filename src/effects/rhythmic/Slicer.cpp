// The slicer's two saws and its gate.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/rhythmic/Slicer.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/TempoTables.h"
#include "effects/rhythmic/SlicerTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr std::int32_t kPhaseTop = 2147483647;
constexpr int kDepthStart = 127;
constexpr int kSmoothingStart = 11;

std::int16_t knobValue(const KnobTable& table, int knob) { return table[static_cast<std::size_t>(knob)]; }

/// The level may exceed 1.0 fourfold, so that its products need more than 32 bits.
std::int32_t levelFollowed(std::int32_t state, std::int32_t level) {
  const std::int64_t sum = static_cast<std::int64_t>(state) * 32520 + static_cast<std::int64_t>(level) * 247;
  return static_cast<std::int32_t>(sum >> 15);
}

std::int16_t sliced(std::int32_t gain, std::int32_t in, std::int64_t level) {
  const std::int64_t out = (mul15(gain, in) * level) >> 15;
  return static_cast<std::int16_t>(std::clamp<std::int64_t>(out, -kFullScale, kFullScale));
}

}  // namespace

Slicer::Slicer() {
  updateStep();
  updateHold();
  setEdit(2, kDepthStart);
  setEdit(4, kSmoothingStart);
}

int Slicer::setEdit(unsigned index, int value) {
  const int knob = value & 127;
  switch (index) {
    case 0:
      freqKnob = knob;
      updateStep();
      return knob;
    case 1:
      holdKnob = knob;
      updateHold();
      return knob;
    case 2:
      floor = mul15(knobValue(linearTable, 127 - knob), knobValue(linearTable, 127 - knob));
      return knob;
    case 3:
      return knob;
    case 4:
      lfoCoefficient = knobValue(squareTable, knob);
      return knob;
    default:
      return 0;
  }
}

void Slicer::setTempo(int tempoTenths) {
  bpm = static_cast<float>(tempoTenths) / 10.0F;
  updateStep();
  updateHold();
}

void Slicer::updateStep() { lfoStep = tempoStep(freqKnob, bpm); }

void Slicer::updateHold() {
  const int knob = holdKnob;
  // The share of the cycle with the gate shut, 32 fractional bits.
  const std::int64_t share = (std::int64_t{knobValue(linearTable, std::min(knob, 126))} * 2 * kPhaseTop) >> 15;
  const auto held = static_cast<std::int32_t>(static_cast<std::uint32_t>(share));
  const std::int32_t shutAt = held >> 16;
  holdOffset = wrapAdd(held, kPhaseTop);
  edge = shutAt >= 0 ? shutAt - 65536 : shutAt;
  level = slicerLevelTable[static_cast<std::size_t>(knob)];
}

void Slicer::reset() {
  restart = true;
  envelope.setNow(0);
}

void Slicer::process(StereoBlock& block, unsigned count) {
  if (restart && count > 0) {
    restart = false;
    phaseDown = kPhaseTop;
    phaseUp = 0;
  }
  for (unsigned start = 0; start < count; start += kControlGrid) {
    render(block, start, std::min(count, start + kControlGrid));
  }
}

void Slicer::render(StereoBlock block, unsigned start, unsigned end) {
  const std::int32_t step = lfoStep;
  const std::int32_t offset = holdOffset;
  const std::int32_t edgeNow = edge;
  const std::int32_t levelTo = level;
  const std::int32_t floorNow = floor;
  const std::int32_t smoothing = lfoCoefficient;
  std::int32_t up = phaseUp;
  std::int32_t down = phaseDown;
  std::int32_t levelNow = levelState;
  SmoothedValue gate = envelope;
  for (unsigned i = start; i < end; ++i) {
    levelNow = levelFollowed(levelNow, levelTo);
    up = wrapAdd(up, step);
    down = wrapSub(down, step);
    const std::int32_t p = ((down >> 16) + (wrapAdd(offset, up) >> 16) - edgeNow) >> 1;
    gate.glide(p, smoothing);
    const std::int32_t e = gate.value();
    const std::int32_t g = e - mul15(e, floorNow) + floorNow;
    block.left[i] = sliced(g, block.left[i], levelNow);
    block.right[i] = sliced(g, block.right[i], levelNow);
  }
  phaseUp = up;
  phaseDown = down;
  levelState = levelNow;
  envelope = gate;
}

}  // namespace tesh::bramel::plugin::sivray::effects
