// The rules behind the hall's computed tables. They are built once, before the first sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/reverbs/HallTables.h"

#include <algorithm>
#include <cmath>

#include "core/FixedPoint.h"
#include "effects/interfaces/Knobs.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

using cofu::core::kFullScale;

constexpr std::size_t kKnobValues = kTopKnob + 1;

/// Delay of each comb in seconds, and the sign of its gain.
constexpr std::array<float, kHallLanes> kCombSeconds{0.14795834F, 0.13795833F, 0.123958334F, 0.11495833F};
constexpr std::array<float, kHallLanes> kCombSigns{32767.0F, -32767.0F, 32767.0F, -32767.0F};

/// The reverberation time at knob 0, and what it grows by up to knob 127; seconds.
constexpr float kLeastSeconds = 0.1F;
constexpr float kSpanOfSeconds = 9.9F;

/// What is left of a sound after the reverberation time: -60 dB.
constexpr double kDecayed = 0.001;

/// Corner of the longest comb's damper in radians per second: 7080 Hz times 2 pi.
constexpr double kDamperCorner = 44484.953;

/// The exponent is rounded to single precision, the power is not.
std::int16_t combGain(std::size_t lane, std::size_t knob) {
  const float position = static_cast<float>(knob) / static_cast<float>(kTopKnob);
  const float span = position * kSpanOfSeconds;
  const float seconds = span + kLeastSeconds;
  const float rate = 1.0F / seconds;
  const float exponent = rate * kCombSeconds[lane];
  const auto gain = static_cast<float>(std::pow(kDecayed, static_cast<double>(exponent)));
  return static_cast<std::int16_t>(std::max(static_cast<int>(gain * kCombSigns[lane]), -kFullScale));
}

std::array<HallRow, kKnobValues> makeGains() {
  std::array<HallRow, kKnobValues> gains{};
  for (std::size_t knob = 0; knob < kKnobValues; ++knob) {
    for (std::size_t lane = 0; lane < kHallLanes; ++lane) {
      gains[knob][lane] = combGain(lane, knob);
    }
  }
  return gains;
}

HallRow makeDampers() {
  const double first = std::exp(-kDamperCorner / static_cast<double>(kHallSampleRate));
  HallRow dampers{};
  for (std::size_t lane = 0; lane < kHallLanes; ++lane) {
    dampers[lane] = static_cast<std::int16_t>(kTankDelays[lane] * first / kTankDelays[0] * kFullScale);
  }
  return dampers;
}

}  // namespace

const HallRow& hallDampers() {
  static const HallRow dampers = makeDampers();
  return dampers;
}

const HallRow& hallGains(unsigned knob) {
  // Made when the first hall is.
  return cofu::core::vouchFor([knob]() -> const HallRow& {
    static const std::array<HallRow, kKnobValues> gains = makeGains();
    return gains[knob % kKnobValues];
  });
}

}  // namespace tesh::bramel::plugin::sivray::effects
