// The settings of the equalizer and its two shelves, in single precision one operation after the other.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/SivrayFxEqualizer.h"

#include "effects/filters/EqualizerTables.h"
#include "effects/interfaces/Flushed.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// 1/32768, the unit of the tables.
constexpr float kTableScale = 3.0517578e-5F;

/// The tables hold the high shelf at a quarter and the low shelf at half of its size, so that rows fit 16 bits.
constexpr float kHighShelfScale = 4.0F;
constexpr float kLowShelfScale = 2.0F;

/// Share of the distance that the coefficients move per sample: a time constant of 333 samples (7.6 ms).
constexpr float kGlideShare = 0.003F;

/// Limit of the filter memory, ten times full scale.
constexpr float kMemoryLimit = 10.0F;
constexpr float kFullScaleFloat = 32767.0F;

/// What the memory keeps per sample: 1 - 2^-13 and 1 - 2^-14, so that no sound stays for ever.
constexpr float kKeptR = 0.9998779F;
constexpr float kKeptS = 0.99993896F;

using StereoFloats = EqualizerLaw::StereoFloats;

StereoFloats limited(StereoFloats x, float limit) {
  using R = cofu::registers::Registers128;
  return R::maxFloats(R::minFloats(x, R::allFloats(limit)), R::allFloats(-limit));
}

float coefficient(std::int16_t entry) { return static_cast<float>(entry) * kTableScale; }

/// Returns the samples before they are truncated.
StereoFloats filtered(const EqualizerLaw::Settings& k, EqualizerLaw::Memory& m, std::int16_t left, std::int16_t right) {
  const StereoFloats x = StereoFloats{static_cast<float>(left), static_cast<float>(right)} / kFullScaleFloat;
  m.a = flushed(x * k.highGain + k.highFeedback1 * m.a);
  const StereoFloats oldB = m.b * kKeptR;
  m.b = flushed(limited((m.a - oldB * kKeptS * k.highFeedback2) * kHighShelfScale, kMemoryLimit));
  const StereoFloats low = m.b * k.lowFeedforward + oldB * k.lowFeedforwardOld - m.c * kKeptS * kKeptR * k.lowFeedback;
  m.c = flushed(limited(kLowShelfScale * low, kMemoryLimit));
  return limited(m.c, 1.0F) * kFullScaleFloat;
}

bool areEqual(StereoFloats a, StereoFloats b) { return a[0] == b[0] && a[1] == b[1]; }

}  // namespace

EqualizerLaw::Settings EqualizerLaw::settingsOf(const Knobs& knobs) {
  const LowShelfRow& low = valueAt(lowShelfTable, knobs.edit1);
  const HighShelfRow& high = valueAt(highShelfTable, knobs.edit2);
  return {coefficient(low.feedforwardOld), coefficient(low.feedforward), coefficient(low.feedback),
          coefficient(high.feedback1),     coefficient(high.gain),       coefficient(high.feedback2)};
}

EqualizerLaw::Settings EqualizerLaw::glided(const Settings& to, bool immediate) const {
  const auto moved = [share = immediate ? 1.0F : kGlideShare](float from, float target) {
    const float way = target - from;
    return from + way * share;
  };
  return {moved(smoothed.lowFeedforwardOld, to.lowFeedforwardOld),
          moved(smoothed.lowFeedforward, to.lowFeedforward),
          moved(smoothed.lowFeedback, to.lowFeedback),
          moved(smoothed.highFeedback1, to.highFeedback1),
          moved(smoothed.highGain, to.highGain),
          moved(smoothed.highFeedback2, to.highFeedback2)};
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
