// The knobs and the per-sample law of the short delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/delays/SivrayFxShortDelay.h"

#include <algorithm>

#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using cofu::core::kFullScale;
using cofu::core::mul15;
using cofu::core::saturate;

namespace {

constexpr std::int32_t kMaxTime = 16383;

/// Takes the loop gain back at long times: 30720 up to knob 63, then 30720 - 4608 * ((i - 63) / 64)^2, truncated.
constexpr KnobTable levelScale = detail::makeKnobTable([](int i) {
  const int above = std::max(i - 63, 0);
  return (30720 * 8 - 9 * above * above) / 8;
});

constexpr std::int32_t stepToZero(std::int32_t x) { return x - ((x > 0) - (x < 0)); }

/// One echo in `line`, read at a fractional position. `read` is the nearer sample.
inline std::int32_t echoOf(const std::int16_t* line, unsigned read, unsigned beyond, std::int32_t fraction,
                           std::int32_t level) {
  const std::int32_t near = line[read];
  const std::int32_t tap = mul15(mul15(line[beyond] - near, fraction) + near, kFullScale);
  const std::int32_t echo = mul15(level, tap);
  // Where the gain fails to make a sample smaller it takes a step towards zero: no sound stays in the loop for ever.
  return echo == tap ? stepToZero(echo) : echo;
}

}  // namespace

int SivrayFxShortDelay::setParameter(unsigned index, int value) {
  if (index != kEdit1 && index != kEdit2) {
    return 0;
  }
  const int knob = value & 127;
  (index == kEdit1 ? edit1 : edit2) = knob;
  const auto timeKnob = static_cast<std::size_t>(edit1);
  const auto levelKnob = static_cast<std::size_t>(edit2);
  const std::int32_t share = std::max<std::int32_t>(squareTable[timeKnob], 5);
  pending.post({mul15(share, kMaxTime), mul15(convexTable[levelKnob], levelScale[timeKnob])});
  return knob;
}

void SivrayFxShortDelay::reset() {
  lines = assigner->acquire();
  std::fill_n(lines, requiredSamples(), std::int16_t{0});
  level.setNow(live.level);
  time.setNow(live.time);
}

void SivrayFxShortDelay::notify(int code) {
  if (code == kRestart) {
    reset();
  }
}

void SivrayFxShortDelay::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    runGrid(block, start, std::min(count, start + kControlGrid));
  }
}

void SivrayFxShortDelay::runGrid(StereoBlock block, unsigned start, unsigned end) {
  const std::int32_t k = glideFactor(immediate);
  const bool resting = level.restsAt(live.level) && time.restsAt(live.time);
  std::int16_t* const line1 = lines;
  std::int16_t* const line2 = lines + kLineLength;
  SmoothedValue nowLevel = level;
  SmoothedValue nowTime = time;
  unsigned write = writeIndex;
  for (unsigned i = start; i < end; ++i) {
    if (!resting) {
      nowLevel.glide(live.level, k);
      nowTime.glide(live.time, k);
    }
    const unsigned read = (write - static_cast<unsigned>(nowTime.value())) & kMask;
    const unsigned beyond = (read - 1) & kMask;
    const std::int32_t fraction = nowTime.state & 32767;
    const std::int32_t echo1 = echoOf(line1, read, beyond, fraction, nowLevel.value());
    const std::int32_t echo2 = echoOf(line2, read, beyond, fraction, nowLevel.value());
    const std::int32_t inputGain = kFullScale - (nowLevel.state >> 16);
    const auto left = static_cast<std::int16_t>(saturate(mul15(block.left[i], inputGain) + echo2));
    const auto right = static_cast<std::int16_t>(saturate(mul15(block.right[i], inputGain) + echo1));
    line1[write] = left;
    line2[write] = right;
    block.left[i] = left;
    block.right[i] = right;
    write = (write + 1) & kMask;
  }
  level = nowLevel;
  time = nowTime;
  writeIndex = write;
}

}  // namespace tesh::bramel::plugin::sivray::effects
