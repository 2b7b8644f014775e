// The settings of the talking modulator and the glide of its bands.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/SivrayFxTalkingModulator.h"

#include "effects/filters/FormantStep.h"
#include "effects/filters/FormantTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Frequency coefficient of the lowest band, which the vowel leaves alone; Q15.
constexpr std::int32_t kLowestBand = 1331;

/// Frequency scale, 14 fractional bits: 0.25 at Offset 0 and 1.5 at 127.
constexpr std::int32_t scaleOf(int offsetKnob) { return (valueAt(linearTable, offsetKnob) * 5 >> 3) + 4096; }

/// Share of the distance per sample, Q15: a time constant of 32 samples. The lowest band jumps.
constexpr std::int32_t kBandGlide = 1010;

}  // namespace

TalkingModulatorLaw::Settings TalkingModulatorLaw::settingsOf(const Knobs& knobs) {
  const auto scaled = [scale = scaleOf(knobs.edit2)](std::int32_t unscaled) { return unscaled * scale >> 14; };
  return {{scaled(kLowestBand), scaled(valueAt(formant1, knobs.edit1)), scaled(valueAt(formant2, knobs.edit1)),
           scaled(valueAt(formant3, knobs.edit1))}};
}

bool TalkingModulatorLaw::restsAt(const Settings& to, bool) const {
  bool rests = true;
  for (std::size_t i = 0; i < kFormantBands; ++i) {
    rests = rests && frequency[i].restsAt(to.band[i]);
  }
  return rests;
}

void TalkingModulatorLaw::glide(const Settings& to, bool immediate) {
  frequency[0].glide(to.band[0], kGlideImmediate);
  for (std::size_t i = 1; i < kFormantBands; ++i) {
    frequency[i].glide(to.band[i], immediate ? kGlideImmediate : kBandGlide);
  }
}

void TalkingModulatorLaw::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  stepFormants<Registers>(*this, left, right);
}

template class TwoKnobEffect<TalkingModulatorLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
