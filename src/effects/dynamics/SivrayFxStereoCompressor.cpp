// Knobs and output stage of the master compressor.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/SivrayFxStereoCompressor.h"

#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// The output level, which no knob reaches.
constexpr std::int32_t kOutput = 32767;

/// Limited before the output level, which is 1.0 at most and needs no second limit.
std::int16_t scaled(std::int32_t y, std::int64_t scale, std::int32_t output) {
  const std::int64_t wide = ((y * scale) >> 15) >> 9;
  const auto v = static_cast<std::int32_t>(std::clamp<std::int64_t>(wide, -kFullScale, kFullScale));
  return static_cast<std::int16_t>(mul15(output, v));
}

}  // namespace

SivrayFxStereoCompressor::StereoCompressorImpl::StereoCompressorImpl() {
  setEdit(0, 50);
  setEdit(1, 0);
  reset();
}

int SivrayFxStereoCompressor::StereoCompressorImpl::setEdit(unsigned index, int value) {
  const int knob = value & 127;
  const auto i = static_cast<std::size_t>(knob);
  switch (index) {
    case 0:
      sensTarget = mul15(squareTable[i], 959) + 64;
      return knob;
    case 1:
      attack = mul15(squareTable[i], 3268) + 8;
      return knob;
    default:
      return 0;
  }
}

void SivrayFxStereoCompressor::StereoCompressorImpl::reset() {
  law.left.previousInput = 0;
  law.right.previousInput = 0;
  law.peak = 0;
  law.envelope = 0;
  law.gain = 0;
  sens.setNow(sensTarget);
  output.setNow(kOutput);
}

template <bool kResting>
void SivrayFxStereoCompressor::StereoCompressorImpl::render(std::int16_t* left, std::int16_t* right, unsigned count,
                                                            std::int32_t sensTo) {
  const std::int32_t k = glideFactor(immediate);
  const std::int32_t attackNow = attack;
  const std::int32_t restingRise = kResting ? CompressorGain::riseFor(sens.value()) : 0;
  const std::int32_t level = output.value();
  SmoothedValue sensNow = sens;
  CompressorGain lawNow = law;
  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      sensNow.glide(sensTo, k);
    }
    const std::int32_t s = sensNow.value();
    const std::int32_t rise = kResting ? restingRise : CompressorGain::riseFor(s);
    lawNow.run(left[i] * 32768, right[i] * 32768, attackNow, rise);
    const std::int64_t scale = (s * lawNow.gain) >> 13;
    left[i] = scaled(lawNow.left.highpass, scale, level);
    right[i] = scaled(lawNow.right.highpass, scale, level);
  }
  sens = sensNow;
  law = lawNow;
}

void SivrayFxStereoCompressor::StereoCompressorImpl::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    const unsigned run = std::min(count - start, kControlGrid);
    const std::int32_t sensTo = sensTarget;
    if (sens.restsAt(sensTo)) {
      render<true>(block.left + start, block.right + start, run, sensTo);
    } else {
      render<false>(block.left + start, block.right + start, run, sensTo);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
