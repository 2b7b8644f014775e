// The settings and the law of the short delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/delays/SivrayFxShortDelay.h"

#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

constexpr unsigned kMask = ShortDelayLaw::kLineLength - 1;

/// Samples: the longest delay that a line can hold.
constexpr std::int32_t kMaxTime = 16383;

/// Q15 share of the longest delay: 5 / 32768 of it is a delay of 2 samples, the shortest that can be interpolated.
constexpr std::int32_t kLeastTimeShare = 5;

/// Largest loop gain by Time knob, Q15: 0.9375 up to the knob's middle, then down a parabola to 0.797 at the longest
/// time, 30720 - 4608 * ((i - 63) / 64)^2, so that long echoes do not pile up.
constexpr KnobTable levelScale = detail::makeKnobTable([](int i) {
  const int above = std::max(i - 63, 0);
  return (30720 * 8 - 9 * above * above) / 8;
});

constexpr std::int32_t stepToZero(std::int32_t x) { return x - ((x > 0) - (x < 0)); }

/// One echo, read between the samples `near` and `beyond` (one older) at `fraction` (Q15).
inline std::int32_t echoOf(std::int32_t near, std::int32_t beyond, std::int32_t fraction, std::int32_t level) {
  const std::int32_t tap = mul15(mul15(beyond - near, fraction) + near, kFullScale);
  const std::int32_t echo = mul15(level, tap);
  // Where rounding keeps the gain from making a sample smaller, one step towards zero does: the loop always dies out.
  return echo == tap ? stepToZero(echo) : echo;
}

}  // namespace

ShortDelayLaw::Settings ShortDelayLaw::settingsOf(const Knobs& knobs) {
  const std::int32_t share = std::max<std::int32_t>(valueAt(squareTable, knobs.edit1), kLeastTimeShare);
  return {mul15(share, kMaxTime), mul15(valueAt(convexTable, knobs.edit2), valueAt(levelScale, knobs.edit1))};
}

void ShortDelayLaw::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  std::int16_t* const line1 = lines;
  std::int16_t* const line2 = lines + kLineLength;
  const unsigned near = (writeIndex - static_cast<unsigned>(time.value())) & kMask;
  const unsigned beyond = (near - 1) & kMask;
  const std::int32_t fraction = time.fraction();
  const std::int32_t echo1 = echoOf(line1[near], line1[beyond], fraction, level.value());
  const std::int32_t echo2 = echoOf(line2[near], line2[beyond], fraction, level.value());
  const std::int32_t inputGain = kFullScale - (level.state >> 16);
  left = static_cast<std::int16_t>(saturate(mul15(left, inputGain) + echo2));
  right = static_cast<std::int16_t>(saturate(mul15(right, inputGain) + echo1));
  line1[writeIndex] = left;
  line2[writeIndex] = right;
  writeIndex = (writeIndex + 1) & kMask;
}

template class TwoKnobEffect<ShortDelayLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
