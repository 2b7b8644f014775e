// The settings of the talking modulator and the smoothing of its bands.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/SivrayFxTalkingModulator.h"

#include "effects/filters/FormantStep.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr std::array<int, 5> kFormantKnobs{0, 32, 64, 96, kTopKnob};

/// Straight lines between the frequencies at the five knob values, truncated. All frequencies are positive.
constexpr KnobTable formantTable(const std::array<int, 5>& frequencies) {
  return tableOf<std::int16_t>([&](int knob) {
    std::size_t line = 0;
    while (line + 2 < kFormantKnobs.size() && knob >= kFormantKnobs[line + 1]) {
      ++line;
    }
    const int width = kFormantKnobs[line + 1] - kFormantKnobs[line];
    const int along = knob - kFormantKnobs[line];
    return (frequencies[line] * (width - along) + frequencies[line + 1] * along) / width;
  });
}

/// Frequency coefficients of the three upper bands, 15 fractional bits, before the Offset knob scales them.
constexpr KnobTable formant1 = formantTable({4558, 3227, 3227, 1926, 1926});
constexpr KnobTable formant2 = formantTable({9185, 11171, 8192, 6454, 16384});
constexpr KnobTable formant3 = formantTable({17128, 17128, 16880, 16632, 21100});

/// Frequency coefficient of the lowest band, which is the same for all vowels; Q15.
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
  return std::equal(frequency.begin(), frequency.end(), to.band.begin(),
                    [](const SmoothedValue& value, std::int32_t target) { return value.restsAt(target); });
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
