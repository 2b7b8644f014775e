// The gain law of tremolo and auto pan, and how each makes the oscillator's speed and spread.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/GainModulator.h"

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/TempoTables.h"
#include "effects/modulation/Q60393Autopan.h"
#include "effects/modulation/Q60393Tremolo.h"
#include "effects/modulation/TriangleLfo.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Share per sample of the one-pole smoother that rounds the triangle, Q15: 0.0675, a time constant of 14 samples. The
/// square curve at 33.
constexpr std::int32_t kLfoSmoothing = squareTable[33];

/// A phase offset of half a cycle less 2^16, the linear curve at 127.
constexpr std::int32_t kAutopanSpread = linearTable[127] << 16;

/// Samples of the tremolo's cycle: 3 * (distance of the knob from 127, squared, + 735), from 2205 (20 Hz) up.
constexpr std::int32_t kCycleScale = 3;
constexpr std::int32_t kCycleBase = 735;

std::int64_t followed(std::int64_t smooth, std::int32_t phase) {
  return smooth + ((std::int64_t{phaseMagnitude(phase)} >> 15) - (smooth >> 15)) * kLfoSmoothing;
}

/// The cube of `smooth` (31 bits) on 0 .. 65535, so up to a gain of 2.0 in Q15, mixed with the constant gain `flat`.
std::int32_t gainOf(std::int64_t smooth, std::int32_t flat) {
  const auto cubed = static_cast<std::int32_t>((((smooth * smooth) >> 31) * smooth) >> 46);
  return flat + cubed - mul15(cubed, flat);
}

}  // namespace

std::int32_t GainModulator::flatnessOf(int depthKnob) { return kFullScale - valueAt(linearTable, depthKnob); }

void GainModulator::advance(const Settings& to, std::int32_t spread, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    phase = wrapAdd(phase, to.lfoStep);
    smoothLeft = followed(smoothLeft, phase);
    smoothRight = spread == 0 ? smoothLeft : followed(smoothRight, wrapAdd(phase, spread));
  }
}

void GainModulator::modulate(const Settings& to, std::int32_t spread, std::int16_t& left, std::int16_t& right) {
  const std::int32_t x = (left + right) >> 1;
  advance(to, spread);
  const std::int32_t flat = mul15(flatness.value(), flatness.value());
  left = static_cast<std::int16_t>(saturate(mul15(gainOf(smoothLeft, flat), x)));
  right = static_cast<std::int16_t>(saturate(mul15(gainOf(smoothRight, flat), x)));
}

Q60393Tremolo::Settings Q60393Tremolo::settingsOf(const Knobs& knobs) {
  const int below = 127 - knobs.edit1;
  const std::int32_t cycle = kCycleScale * (below * below + kCycleBase);
  return {2 * (kTop / cycle), flatnessOf(knobs.edit2)};
}

void Q60393Tremolo::step(const Settings& to, std::int16_t& left, std::int16_t& right) { modulate(to, 0, left, right); }

void Q60393Tremolo::skip(const Settings& to, unsigned count) { advance(to, 0, count); }

Q60393Autopan::Settings Q60393Autopan::settingsOf(const Knobs& knobs) {
  return {tempoStep(knobs), flatnessOf(knobs.edit2)};
}

void Q60393Autopan::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  modulate(to, kAutopanSpread, left, right);
}

void Q60393Autopan::skip(const Settings& to, unsigned count) { advance(to, kAutopanSpread, count); }

template class TwoKnobEffect<Q60393Tremolo>;
template class TwoKnobEffect<Q60393Autopan>;

}  // namespace tesh::bramel::plugin::sivray::effects
