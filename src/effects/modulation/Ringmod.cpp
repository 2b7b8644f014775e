// The oscillator and the doubling output stage of the ring modulator.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/Ringmod.h"

#include <cstdlib>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Scale of the Frequency knob: 12287 at its end is 12287 * 2^15 of a phase of 2^32 per sample, 4134 Hz.
constexpr std::int32_t kFrequencyScale = 12288;

/// Largest value of 30 bits: the carrier's 1.0 with its 15 fractional bits.
constexpr std::int32_t kCarrierOne = 1073741823;

/// Limit of the output while it has 14 fractional bits more than a sample.
constexpr std::int32_t kOutputLimit = 536870911;

/// How much of the carrier is the sine (30 bits): it rises with the frequency and is all of it from 128 on.
std::int32_t sineShare(const SmoothedValue& frequency) {
  const std::int64_t share = static_cast<std::int64_t>(frequency.state) << 8;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(share, -kCarrierOne, kCarrierOne));
}

/// A sine made of two parabolas; its peak is about 16384.
std::int32_t parabolicSine(std::int32_t phase) {
  const std::int32_t p = phase >> 15;
  const std::int32_t q = phase >> 16;
  return mul15(kFullScale - std::abs(p), q) + q;
}

std::int16_t ring(std::int32_t carrier, std::int32_t in, std::int32_t dry, std::int32_t wet) {
  const std::int32_t y = wrapAdd(wrapMul(mul15(carrier, in), wet), wrapMul(dry, in));
  return static_cast<std::int16_t>(std::clamp(y, -kOutputLimit, kOutputLimit) >> 14);
}

}  // namespace

Ringmod::Settings Ringmod::settingsOf(const Knobs& knobs) {
  return {mul15(valueAt(linearTable, knobs.edit1), kFrequencyScale), valueAt(linearTable, knobs.edit2)};
}

void Ringmod::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  const std::int32_t dry = (kCarrierOne - balance.state) >> 15;
  const std::int32_t wet = balance.value();
  phase = wrapAdd(phase, frequency.state);
  const std::int32_t m = sineShare(frequency);
  const std::int32_t carrier = saturate(mul15(m >> 15, parabolicSine(phase)) + ((kCarrierOne - m) >> 15));
  left = ring(carrier, left, dry, wet);
  right = ring(carrier, right, dry, wet);
}

void Ringmod::skip(const Settings&, unsigned count) {
  phase = wrapAdd(phase, wrapMul(frequency.state, static_cast<std::int32_t>(count)));
}

template class TwoKnobEffect<Ringmod>;

}  // namespace tesh::bramel::plugin::sivray::effects
