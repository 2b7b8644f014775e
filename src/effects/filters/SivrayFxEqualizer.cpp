// The equalizer's settings and its two shelves, in single precision with a fixed order of operations.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/SivrayFxEqualizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/EngineRate.h"
#include "effects/filters/EqualizerTables.h"
#include "effects/interfaces/Flushed.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Corners of the shelves, Hz.
constexpr double kLowCorner = 80.0;
constexpr double kHighCorner = 12000.0;

/// The tables' coefficients are multiples of 1/32768, scaled by a quarter for the high shelf and by a half for the low
/// shelf.
constexpr float kStep = 3.0517578e-5F;
constexpr float kHighShelfScale = 4.0F;
constexpr float kLowShelfScale = 2.0F;

/// Share of the distance that the coefficients move per sample: a time constant of 333 samples (7.6 ms).
constexpr float kGlideShare = 0.003F;

/// Limit of the filter memory, ten times full scale.
constexpr float kMemoryLimit = 10.0F;
constexpr float kFullScaleFloat = 32767.0F;

/// Share of the state that is kept per sample, 1 - 2^-13 and 1 - 2^-14, so that every sound decays to silence.
constexpr float kKeptR = 0.9998779F;
constexpr float kKeptS = 0.99993896F;

using Shelf = EqualizerLaw::Shelf;
using StereoFloats = EqualizerLaw::StereoFloats;

StereoFloats limited(StereoFloats x, float limit) {
  using R = cofu::registers::Registers128;
  return R::maxFloats(R::minFloats(x, R::allFloats(limit)), R::allFloats(-limit));
}

double gainOf(int halfDecibels) { return std::pow(10.0, halfDecibels / 40.0); }

double tangentOf(double hertz) { return std::tan(std::numbers::pi * hertz / cofu::core::kEngineRate); }

/// The pole of a first-order all-pass whose corner has this tangent.
double poleOf(double tangent) { return (tangent - 1.0) / (tangent + 1.0); }

Shelf rounded(double before, double now, double pole, float scale) {
  const auto entry = [scale](double coefficient) {
    return static_cast<float>(static_cast<std::int16_t>(coefficient * 32768.0 / static_cast<double>(scale))) * kStep;
  };
  return {entry(before), entry(now), entry(pole)};
}

// A shelf is the sound plus a share of an all-pass. A cut moves the pole so that it exactly undoes a boost.
const auto lowShelves = tableOf<Shelf>([](int knob) {
  const double gain = gainOf(valueAt(lowShelfGains, knob));
  const double pole = poleOf(tangentOf(kLowCorner) / std::min(gain, 1.0));
  const double lift = (gain - 1.0) * (1.0 + pole) / 2.0;
  return rounded(pole + lift, 1.0 + lift, pole, kLowShelfScale);
});

const auto highShelves = tableOf<Shelf>([](int knob) {
  const double gain = gainOf(valueAt(highShelfGains, knob));
  const double pole = poleOf(tangentOf(kHighCorner) * std::min(gain, 1.0));
  const double lift = (gain - 1.0) * (1.0 - pole) / 2.0;
  return rounded(pole - lift, 1.0 + lift, pole, kHighShelfScale);
});

/// Returns the samples before they are truncated.
StereoFloats filtered(const EqualizerLaw::Settings& k, EqualizerLaw::Memory& m, std::int16_t left, std::int16_t right) {
  const StereoFloats x = StereoFloats{static_cast<float>(left), static_cast<float>(right)} / kFullScaleFloat;
  m.a = flushed(x * k.high.now + k.high.before * m.a);
  const StereoFloats oldB = m.b * kKeptR;
  m.b = flushed(limited((m.a - oldB * kKeptS * k.high.pole) * kHighShelfScale, kMemoryLimit));
  const StereoFloats low = m.b * k.low.now + oldB * k.low.before - m.c * kKeptS * kKeptR * k.low.pole;
  m.c = flushed(limited(kLowShelfScale * low, kMemoryLimit));
  return limited(m.c, 1.0F) * kFullScaleFloat;
}

bool areEqual(StereoFloats a, StereoFloats b) { return a[0] == b[0] && a[1] == b[1]; }

}  // namespace

EqualizerLaw::Settings EqualizerLaw::settingsOf(const Knobs& knobs) {
  return {valueAt(lowShelves, knobs.edit1), valueAt(highShelves, knobs.edit2)};
}

EqualizerLaw::Settings EqualizerLaw::glided(const Settings& to, bool immediate) const {
  const auto moved = [share = immediate ? 1.0F : kGlideShare](float from, float target) {
    const float way = target - from;
    return from + way * share;
  };
  const auto movedShelf = [&moved](const Shelf& from, const Shelf& target) {
    return Shelf{moved(from.before, target.before), moved(from.now, target.now), moved(from.pole, target.pole)};
  };
  return {movedShelf(smoothed.low, to.low), movedShelf(smoothed.high, to.high)};
}

bool EqualizerLaw::isSilent(unsigned) const {
  Memory next = memory;
  const StereoFloats out = filtered(smoothed, next, 0, 0);
  const bool isHeard = static_cast<int>(out[0]) != 0 || static_cast<int>(out[1]) != 0;
  return !isHeard && areEqual(next.a, memory.a) && areEqual(next.b, memory.b) && areEqual(next.c, memory.c);
}

void EqualizerLaw::step(const Settings&, std::int16_t& leftSample, std::int16_t& rightSample) {
  const StereoFloats out = filtered(smoothed, memory, leftSample, rightSample);
  leftSample = static_cast<std::int16_t>(out[0]);
  rightSample = static_cast<std::int16_t>(out[1]);
}

template class TwoKnobEffect<EqualizerLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
