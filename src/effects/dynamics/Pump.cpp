// The pump's oscillator and its envelope.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Pump.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/dynamics/PumpTables.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// What is left of the sound while it is held down: the square of the depth knob's rest at 85.
constexpr std::int32_t kFloor = mul15(linearTable[127 - 85], linearTable[127 - 85]);

/// Smoothing of the envelope, the smoothing knob at 13.
constexpr std::int32_t kSmoothing = squareTable[13];

constexpr std::int32_t kPhaseStart = -2147483647;

/// The level may exceed 1.0 threefold, so that its products need more than 32 bits.
std::int32_t levelFollowed(std::int32_t state, std::int32_t level) {
  const std::int64_t sum = static_cast<std::int64_t>(state) * 32520 + static_cast<std::int64_t>(level) * 247;
  return static_cast<std::int32_t>(sum >> 15);
}

std::int16_t pumped(std::int32_t gain, std::int32_t in, std::int32_t level) {
  const std::int64_t out = (static_cast<std::int64_t>(mul15(gain, in)) * level) >> 15;
  return static_cast<std::int16_t>(std::clamp<std::int64_t>(out, -kFullScale, kFullScale));
}

/// Falls to 0 at mid-cycle and rises to the end.
std::int32_t parabola(std::int32_t phase, std::int32_t gain) {
  const std::int64_t square = (static_cast<std::int64_t>(phase) * phase) >> 47;
  return static_cast<std::int32_t>((square * gain) >> 15);
}

}  // namespace

Pump::Pump() {
  updateStep();
  setEdit(1, 0);
}

int Pump::setEdit(unsigned index, int value) {
  const int knob = value & 127;
  switch (index) {
    case 0:
      freqKnob = knob;
      updateStep();
      return knob;
    case 1:
      attackGain = pumpAttackTable[static_cast<std::size_t>(127 - knob)];
      level = pumpLevelTable[static_cast<std::size_t>(127 - knob)];
      return knob;
    default:
      return 0;
  }
}

void Pump::setTempo(int tempoTenths) {
  bpm = static_cast<float>(tempoTenths) / 10.0F;
  updateStep();
}

void Pump::updateStep() { lfoStep = tempoStep(freqKnob, bpm); }

void Pump::reset() {
  restart = true;
  envelope.setNow(0);
}

void Pump::process(StereoBlock& block, unsigned count) {
  if (restart && count > 0) {
    restart = false;
    phaseDown = 0;
    phaseUp = kPhaseStart;
  }
  for (unsigned start = 0; start < count; start += kControlGrid) {
    const std::int32_t step = lfoStep;
    const std::int32_t attack = attackGain;
    const std::int32_t levelTo = level;
    const unsigned end = std::min(count, start + kControlGrid);
    for (unsigned i = start; i < end; ++i) {
      levelState = levelFollowed(levelState, levelTo);
      phaseUp = wrapAdd(phaseUp, step);
      phaseDown = wrapSub(phaseDown, step);
      const std::int32_t a = parabola(phaseUp, attack);
      const std::int32_t b = ((phaseDown >> 16) + 32768 + (phaseUp >> 16)) >> 1;
      envelope.glide(std::min(a, b), kSmoothing);
      const std::int32_t e = envelope.value();
      const std::int32_t g = e - mul15(e, kFloor) + kFloor;
      block.left[i] = pumped(g, block.left[i], levelState);
      block.right[i] = pumped(g, block.right[i], levelState);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
