// The oscillator shapes and the gain law of tremolo and auto pan.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/GainModulator.h"

#include <algorithm>
#include <limits>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/modulation/TriangleLfo.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr std::int32_t kTop = std::numeric_limits<std::int32_t>::max();

/// Q15 gain of a smoothed oscillator value (31 bits): its cube on 0 .. 65535, mixed with the flat gain.
std::int32_t gainOf(std::int64_t smooth, std::int32_t flat) {
  const auto cubed = static_cast<std::int32_t>((((smooth * smooth) >> 31) * smooth) >> 46);
  return flat + cubed - mul15(cubed, flat);
}

std::int64_t followed(std::int64_t smooth, std::int64_t shape, std::int32_t coefficient) {
  return smooth + ((shape >> 15) - (smooth >> 15)) * coefficient;
}

}  // namespace

GainModulator::GainModulator(int spreadKnob) {
  setShape(1, 63);
  setShape(2, kTriangle);
  setShape(3, spreadKnob);
  setShape(4, 33);
  reset();
}

int GainModulator::setShape(unsigned index, int value) {
  const int knob = index == 2 ? std::clamp(value, 0, 4) : value & 127;
  const auto i = static_cast<std::size_t>(knob);
  switch (index) {
    case 1:
      flatnessTarget = 32767 - linearTable[i];
      return knob;
    case 2:
      lfoType = knob;
      return knob;
    case 3:
      spread = wrapShiftLeft(linearTable[i], 16);
      return knob;
    case 4:
      lfoCoefficient = squareTable[i];
      return knob;
    default:
      return 0;
  }
}

void GainModulator::reset() {
  flatness.setNow(flatnessTarget);
  smoothLeft = 0;
  smoothRight = 0;
  restart = true;
}

template <GainModulator::LfoType kType, bool kResting>
void GainModulator::render(std::int16_t* left, std::int16_t* right, unsigned count) {
  const auto shape = [](std::int32_t up, std::int32_t down) -> std::int64_t {
    switch (kType) {
      case kRisingSaw:
        return (up >> 1) + 1073741823;
      case kTriangle:
        return phaseMagnitude(up);
      case kSquareUp:
        return up < 1 ? 0 : kTop;
      case kFallingSaw:
        return (down >> 1) + 1073741823;
      case kSquareDown:
        return down > 0 ? kTop : 0;
    }
  };
  const std::int32_t k = glideFactor(immediate);
  const std::int32_t target = flatnessTarget;
  const std::int32_t step = lfoStep;
  const std::int32_t offset = spread;
  const std::int32_t coefficient = lfoCoefficient;
  SmoothedValue flatNow = flatness;
  std::int32_t up = phaseUp;
  std::int32_t down = phaseDown;
  std::int64_t smoothL = smoothLeft;
  std::int64_t smoothR = smoothRight;
  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      flatNow.glide(target, k);
    }
    const std::int32_t x = (left[i] + right[i]) >> 1;
    up = wrapAdd(up, step);
    down = wrapSub(down, step);
    smoothL = followed(smoothL, shape(up, down), coefficient);
    smoothR = followed(smoothR, shape(wrapAdd(up, offset), wrapAdd(down, offset)), coefficient);
    const std::int32_t flat = mul15(flatNow.value(), flatNow.value());
    left[i] = static_cast<std::int16_t>(saturate(mul15(gainOf(smoothL, flat), x)));
    right[i] = static_cast<std::int16_t>(saturate(mul15(gainOf(smoothR, flat), x)));
  }
  flatness = flatNow;
  phaseUp = up;
  phaseDown = down;
  smoothLeft = smoothL;
  smoothRight = smoothR;
}

template <GainModulator::LfoType kType>
void GainModulator::renderAs(std::int16_t* left, std::int16_t* right, unsigned count) {
  if (flatness.restsAt(flatnessTarget)) {
    render<kType, true>(left, right, count);
  } else {
    render<kType, false>(left, right, count);
  }
}

void GainModulator::process(StereoBlock& block, unsigned count) {
  if (restart && count > 0) {
    restart = false;
    phaseUp = kTop;
    phaseDown = kTop;
  }
  for (unsigned start = 0; start < count; start += kControlGrid) {
    const unsigned run = std::min(count - start, kControlGrid);
    std::int16_t* const left = block.left + start;
    std::int16_t* const right = block.right + start;
    switch (lfoType) {
      case kRisingSaw:
        renderAs<kRisingSaw>(left, right, run);
        break;
      case kTriangle:
        renderAs<kTriangle>(left, right, run);
        break;
      case kSquareUp:
        renderAs<kSquareUp>(left, right, run);
        break;
      case kFallingSaw:
        renderAs<kFallingSaw>(left, right, run);
        break;
      default:
        renderAs<kSquareDown>(left, right, run);
        break;
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
