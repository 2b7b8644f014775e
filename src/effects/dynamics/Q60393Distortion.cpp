// The filters and the folding curve of the distortion.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Q60393Distortion.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr std::int64_t kTop = 2147483647;

// The highpass in force, 15 fractional bits.
constexpr std::int64_t kHighpassA0 = 32294;
constexpr std::int64_t kHighpassB1 = 31820;

/// How many bits the gain reaches above 1.0.
constexpr int kGainShift = 6;

// The cut after the curve: 8000 Hz, -12 dB, a Q of 4.0; 29 fractional bits.
constexpr std::int64_t kB0 = 411701568;
constexpr std::int64_t kB1 = -308910432;
constexpr std::int64_t kB2 = 327725504;
constexpr std::int64_t kA1 = 308910432;
constexpr std::int64_t kA2 = -202556144;

std::int64_t clampTop(std::int64_t x) { return std::clamp(x, -kTop, kTop); }

/// Rises to a quarter of full scale at half of it, then folds back to 0.152 at full scale, and is flat outside.
std::int64_t folded(std::int64_t v) {
  const std::int64_t u = (clampTop(v) * 26624) >> 15;
  const std::int64_t square = (u * u) >> 31;
  // Without a branch, which would be taken at random.
  const std::int64_t sign = u >> 63;
  return u - ((square ^ sign) - sign);
}

}  // namespace

Q60393Distortion::Q60393Distortion() : live(settingsOf(gainKnob, levelKnob)), pending(live) { reset(); }

Q60393Distortion::Settings Q60393Distortion::settingsOf(int gainKnobValue, int levelKnobValue) {
  return {mul15(squareTable[static_cast<std::size_t>(gainKnobValue)], 31279) + 1489,
          mul15(squareTable[static_cast<std::size_t>(levelKnobValue)], 31489) + 1279};
}

int Q60393Distortion::setEdit(unsigned index, int value) {
  const int knob = value & 127;
  switch (index) {
    case 0:
      gainKnob = knob;
      break;
    case 1:
      levelKnob = knob;
      break;
    default:
      return 0;
  }
  pending.post(settingsOf(gainKnob, levelKnob));
  return knob;
}

void Q60393Distortion::reset() {
  gain.setNow(live.gain);
  level.setNow(live.level);
  memory = {};
}

std::int64_t Q60393Distortion::highpass(Memory& m, std::int64_t x) {
  const std::int64_t y =
      clampTop((kHighpassA0 * x >> 15) + (-kHighpassA0 * m.highpassIn >> 15) + (kHighpassB1 * m.highpassOut >> 15));
  m.highpassIn = x;
  m.highpassOut = y;
  return y;
}

std::int64_t Q60393Distortion::postFilter(Memory& m, std::int64_t s) {
  const std::int64_t w =
      (s * kB0 >> 31) + (m.in1 * kB1 >> 31) + (m.in2 * kB2 >> 31) + (m.out1 * kA1 >> 31) + (m.out2 * kA2 >> 31);
  const std::int64_t y = clampTop(w * 4);
  m.in2 = m.in1;
  m.in1 = s;
  m.out2 = m.out1;
  m.out1 = y;
  return y;
}

template <bool kResting>
void Q60393Distortion::render(std::int16_t* left, std::int16_t* right, unsigned count) {
  const std::int32_t k = glideFactor(immediate);
  SmoothedValue gainNow = gain;
  SmoothedValue levelNow = level;
  Memory m = memory;
  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      gainNow.glide(live.gain, k);
      levelNow.glide(live.level, k);
    }
    const std::int64_t x = static_cast<std::int64_t>((left[i] + right[i]) & ~1) * 16384;
    const std::int64_t v = (gainNow.value() * highpass(m, x)) >> (15 - kGainShift);
    const std::int64_t y = postFilter(m, (levelNow.value() * folded(v)) >> 15);
    const std::int32_t out = leak(leak(static_cast<std::int32_t>(y >> 15)));
    left[i] = static_cast<std::int16_t>(out);
    right[i] = left[i];
  }
  gain = gainNow;
  level = levelNow;
  memory = m;
}

void Q60393Distortion::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    const unsigned run = std::min(count - start, kControlGrid);
    if (gain.restsAt(live.gain) && level.restsAt(live.level)) {
      render<true>(block.left + start, block.right + start, run);
    } else {
      render<false>(block.left + start, block.right + start, run);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
