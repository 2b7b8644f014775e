// The formulas behind the hall's numbers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/HallFlow.h"

#include <algorithm>
#include <cmath>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

using cofu::core::kFullScale;

/// Delay of each comb in seconds, and the sign of its gain.
constexpr std::array<float, kHallLanes> kCombSeconds{0.14795834F, 0.13795833F, 0.123958334F, 0.11495833F};
constexpr std::array<float, kHallLanes> kCombSigns{32767.0F, -32767.0F, 32767.0F, -32767.0F};

/// The reverberation time at knob 0, and its increase up to knob 127; seconds.
constexpr float kLeastSeconds = 0.1F;
constexpr float kSpanOfSeconds = 9.9F;

/// The level of a sound after the reverberation time: -60 dB.
constexpr double kDecayed = 0.001;

/// Corner of the longest comb's damper in radians per second: 7080 Hz times 2 pi.
constexpr double kDamperCorner = 44484.953;

/// The exponent is rounded to single precision; the power is not.
std::int16_t combGain(std::size_t lane, int knob) {
  const float position = static_cast<float>(knob) / static_cast<float>(kTopKnob);
  const float span = position * kSpanOfSeconds;
  const float seconds = span + kLeastSeconds;
  const float rate = 1.0F / seconds;
  const float exponent = rate * kCombSeconds[lane];
  const auto gain = static_cast<float>(std::pow(kDecayed, static_cast<double>(exponent)));
  return static_cast<std::int16_t>(std::max(static_cast<int>(gain * kCombSigns[lane]), -kFullScale));
}

}  // namespace

HallDampers::HallDampers() {
  const double first = std::exp(-kDamperCorner / cofu::core::kEngineRate);
  for (std::size_t k = 0; k < kHallLanes; ++k) {
    const auto damper = static_cast<std::int16_t>(kTankDelays[k] * first / kTankDelays[0] * kFullScale);
    ofLast[2 * k] = damper;
    ofComb[2 * k] = static_cast<std::int16_t>(damper - 32768);
  }
}

const std::array<HallRow, kTopKnob + 1> hallGains = tableOf<HallRow>([](int knob) {
  return HallRow{combGain(0, knob), combGain(1, knob), combGain(2, knob), combGain(3, knob)};
});

}  // namespace tesh::bramel::plugin::sivray::effects
