// The settings, the ramps and the law of the state-variable filter.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/SivrayFxTolvanFilter.h"

#include <cmath>

#include "effects/filters/TolvanStep.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr std::int64_t kOne24 = 16777216;
constexpr std::int32_t kHalf24 = 8388608;

/// The angle whose sine is the cutoff at knob 0: 26.2 Hz of the engine's rate, in radians per sample.
constexpr double kLowestAngle = 0.00373317284283;

/// Above this knob a step is a quarter of a semitone.
constexpr int kLastSemitone = 97;

/// 31 fractional bits.
const auto cutoffTable = tableOf<std::int32_t>([](int knob) {
  const double semitones = knob <= kLastSemitone ? knob : kLastSemitone + (knob - kLastSemitone) / 4.0;
  return 2147483648.0 * std::sin(kLowestAngle * std::exp2(semitones / 12.0));
});

/// Above this cutoff, 0.637 of the highest, the resonance is reduced, so that the filter stays stable.
constexpr std::int32_t kResonanceKnee = 1367566549;

/// Resonance at the knob's end: 0.99992, just below self-oscillation.
constexpr std::int64_t kHighestResonance = 2147314568;

/// Highest resonance times the convex curve, 1 - (1 - knob / 127)^2, truncated, exactly, in integers.
std::int32_t resonanceOf(int knob) {
  const std::int64_t rest = kTopKnob - knob;
  return static_cast<std::int32_t>(kHighestResonance * (kTopKnobSquared - rest * rest) / kTopKnobSquared);
}

/// 1.0 for all but very high resonances, and a half for the highest.
std::int32_t inputGainOf(std::int32_t resonance) {
  const std::int32_t room = std::min((TolvanFilter::kFull24 - (resonance >> 7)) * 64, TolvanFilter::kFull24);
  return ((room >> 1) + kHalf24) >> 9;
}

}  // namespace

TolvanFilter::Settings TolvanFilter::settingsOf(const Knobs& knobs) {
  const std::int32_t resonance = resonanceOf(knobs.edit2);
  return {valueAt(cutoffTable, knobs.edit1), resonance, inputGainOf(resonance)};
}

void TolvanFilter::aim(const Settings& to, bool) {
  inputGain = StereoWords::both(to.inputGain);
  const std::int64_t above = std::max(to.cutoff - kResonanceKnee, 0);
  const std::int64_t takenBack = (((above * above) >> 31) >> 7) * 3 >> 1;
  const std::int64_t d = ((kOne24 - takenBack) * (to.resonance >> 7)) >> 24;
  damping.aimAt(static_cast<std::int32_t>(((kOne24 - (to.cutoff >> 8)) * (kOne24 - d)) >> 24));
  frequency.aimAt(static_cast<std::int32_t>((((d >> 1) + kHalf24) * (to.cutoff >> 7)) >> 24));
}

template <TolvanMode kMode>
void TolvanLaw<kMode>::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  stepFilter<cofu::registers::Registers128, kMode>(*this, left, right);
}

// Not every compiler inlines each use of these into the frames below.
template void TolvanLaw<TolvanMode::kLowpass>::step(const Settings&, std::int16_t&, std::int16_t&) SIVRAY_NONBLOCKING;
template void TolvanLaw<TolvanMode::kHighpass>::step(const Settings&, std::int16_t&, std::int16_t&) SIVRAY_NONBLOCKING;
template void TolvanLaw<TolvanMode::kBandpass>::step(const Settings&, std::int16_t&, std::int16_t&) SIVRAY_NONBLOCKING;

template class TwoKnobEffect<TolvanLaw<TolvanMode::kLowpass>>;
template class TwoKnobEffect<TolvanLaw<TolvanMode::kHighpass>>;
template class TwoKnobEffect<TolvanLaw<TolvanMode::kBandpass>>;

}  // namespace tesh::bramel::plugin::sivray::effects
