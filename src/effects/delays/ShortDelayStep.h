// The law of the short delay, sample by sample or in lanes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/delays/SivrayFxShortDelay.h"
#include "effects/interfaces/LaneRun.h"

namespace tesh::bramel::plugin::sivray::effects {

/// One echo of the samples from `near` on.
template <typename Samples>
Samples echoOf(const std::int16_t* line, unsigned near, typename Samples::template Fraction<15> fraction,
               typename Samples::Gain level) {
  const Samples echo = loadBetween<Samples, ShortDelayLaw::kLineLength>(line, near, fraction);
  const Samples tap = mul15(echo, typename Samples::Gain(cofu::core::kFullScale));
  // If rounding keeps the gain from making a sample smaller, moves it one step towards zero, so that the loop always
  // decays to silence.
  return nearerZeroWhereEqual(mul15(tap, level), tap);
}

/// Computes the next samples of both channels, in place. Smoothed values must not change within a register. The time
/// must be at least `Samples::kCount`, unless the level is 0: then the content of the lines has no effect.
template <typename Samples>
void stepAs(ShortDelayLaw& law, std::int16_t* left, std::int16_t* right) {
  constexpr unsigned kLength = ShortDelayLaw::kLineLength;
  std::int16_t* const line1 = law.line(0);
  std::int16_t* const line2 = law.line(1);
  const typename Samples::Gain inputGain(cofu::core::kFullScale - (law.level.state >> 16));
  Samples outLeft = mul15(Samples::load(left), inputGain);
  Samples outRight = mul15(Samples::load(right), inputGain);
  if (law.level.value() != 0) {
    const unsigned near = law.writeIndex - static_cast<unsigned>(law.time.value());
    const typename Samples::template Fraction<15> fraction(law.time.fraction());
    const typename Samples::Gain level(law.level.value());
    outRight = sum(outRight, echoOf<Samples>(line1, near, fraction, level));
    outLeft = sum(outLeft, echoOf<Samples>(line2, near, fraction, level));
  }
  outLeft.store(left);
  outRight.store(right);
  storeToRing<kLength>(line1, law.writeIndex, outLeft);
  storeToRing<kLength>(line2, law.writeIndex, outRight);
  law.moveOn(Samples::kCount);
}

}  // namespace tesh::bramel::plugin::sivray::effects
