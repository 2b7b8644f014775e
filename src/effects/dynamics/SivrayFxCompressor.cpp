// Knobs and output stage of the compressor.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/SivrayFxCompressor.h"

#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Gain times sensitivity times 5, which needs more than 31 bits before it is shifted.
std::int64_t scaleOf(std::int32_t gain, std::int32_t sens) {
  return (static_cast<std::int64_t>(gain) * sens * 5) >> 15;
}

std::int16_t scaled(std::int32_t y, std::int64_t scale) {
  const std::int64_t out = ((y * scale) >> 15) >> 10;
  return static_cast<std::int16_t>(std::clamp<std::int64_t>(out, -kFullScale, kFullScale));
}

}  // namespace

SivrayFxCompressor::Settings SivrayFxCompressor::settingsOf(int sensKnob, int attackKnob) {
  return {mul15(squareTable[static_cast<std::size_t>(sensKnob)], 28672) + 4096,
          mul15(squareTable[static_cast<std::size_t>(attackKnob)], 3245) + 32};
}

int SivrayFxCompressor::setParameter(unsigned index, int value) {
  const int knob = value & 127;
  switch (index) {
    case kEdit1:
      edit1 = knob;
      break;
    case kEdit2:
      edit2 = knob;
      break;
    default:
      return 0;
  }
  pending.post(settingsOf(edit1, edit2));
  return knob;
}

void SivrayFxCompressor::reset() {
  law = {};
  sens.setNow(0);
}

void SivrayFxCompressor::notify(int code) {
  if (code == kRestart) {
    reset();
  }
}

template <bool kResting>
void SivrayFxCompressor::render(std::int16_t* left, std::int16_t* right, unsigned count) {
  const std::int32_t k = glideFactor(immediate);
  const std::int32_t restingRise = kResting ? CompressorGain::riseFor(sens.value()) : 0;
  SmoothedValue sensNow = sens;
  CompressorGain lawNow = law;
  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      sensNow.glide(live.sens, k);
    }
    const std::int32_t s = sensNow.value();
    const std::int32_t rise = kResting ? restingRise : CompressorGain::riseFor(s);
    lawNow.run(left[i] * 16384, right[i] * 16384, live.attack, rise);
    const std::int64_t scale = scaleOf(lawNow.gain, s);
    left[i] = scaled(lawNow.left.highpass, scale);
    right[i] = scaled(lawNow.right.highpass, scale);
  }
  sens = sensNow;
  law = lawNow;
}

void SivrayFxCompressor::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    const unsigned run = std::min(count - start, kControlGrid);
    if (sens.restsAt(live.sens)) {
      render<true>(block.left + start, block.right + start, run);
    } else {
      render<false>(block.left + start, block.right + start, run);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
