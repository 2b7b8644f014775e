// The knobs of the talking modulator and the glide of its bands.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/filters/SivrayFxTalkingModulator.h"

#include <algorithm>

#include "effects/filters/FormantTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// The frequency of the lowest band, which the vowel leaves alone.
constexpr std::int32_t kLowestBand = 1331;

constexpr std::int32_t kBandGlide = 1010;

}  // namespace

SivrayFxTalkingModulator::Targets SivrayFxTalkingModulator::targetsOf(int formantKnob, int offsetKnob) {
  const auto vowel = static_cast<std::size_t>(formantKnob);
  const std::int32_t scale = (linearTable[static_cast<std::size_t>(offsetKnob)] * 5 >> 3) + 4096;
  const auto scaled = [scale](std::int32_t unscaled) { return unscaled * scale >> 14; };
  return {{scaled(kLowestBand), scaled(formant1[vowel]), scaled(formant2[vowel]), scaled(formant3[vowel])}};
}

int SivrayFxTalkingModulator::setParameter(unsigned index, int value) {
  if (index != kEdit1 && index != kEdit2) {
    return 0;
  }
  const int knob = value & 127;
  (index == kEdit1 ? edit1 : edit2) = knob;
  pending.post(targetsOf(edit1, edit2));
  return knob;
}

void SivrayFxTalkingModulator::reset() {
  frequency = {};
  bank = {};
}

void SivrayFxTalkingModulator::notify(int code) {
  if (code == kRestart) {
    reset();
  }
}

void SivrayFxTalkingModulator::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    const unsigned end = std::min(count, start + kControlGrid);
    for (unsigned i = start; i < end;) {
      const unsigned run = restsAtTargets() ? end - i : 1;
      glide();
      render(block, i, i + run);
      i += run;
    }
  }
}

bool SivrayFxTalkingModulator::restsAtTargets() const {
  bool rests = true;
  for (std::size_t i = 0; i < kFormantBands; ++i) {
    rests = rests && frequency[i].restsAt(live.band[i]);
  }
  return rests;
}

/// The lowest band does not glide: it jumps.
void SivrayFxTalkingModulator::glide() {
  frequency[0].glide(live.band[0], kGlideImmediate);
  for (std::size_t i = 1; i < kFormantBands; ++i) {
    frequency[i].glide(live.band[i], immediate ? kGlideImmediate : kBandGlide);
  }
}

void SivrayFxTalkingModulator::render(StereoBlock block, unsigned start, unsigned end) {
  const FormantLanes f =
      FormantLanes::of({frequency[0].value(), frequency[1].value(), frequency[2].value(), frequency[3].value()});
  FormantBank<FormantLanes> now = bank;
  for (unsigned i = start; i < end; ++i) {
    const std::int32_t x = (block.left[i] + block.right[i]) >> 1;
    const auto out = static_cast<std::int16_t>(cofu::core::saturate(now.step(x, f)));
    block.left[i] = out;
    block.right[i] = out;
  }
  bank = now;
}

}  // namespace tesh::bramel::plugin::sivray::effects
