// The law of the tempo-locked delay in lanes, and what it shares with the one that goes sample by sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/delays/SivrayFxBpmSyncDelay.h"
#include "effects/interfaces/LaneRun.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The sound `time` ahead of `position` in line 0 or 1, between two samples (12 bits of fraction).
template <typename Samples>
Samples tapAt(const BpmSyncDelayLaw& law, unsigned line, unsigned position) {
  const unsigned near = position - static_cast<unsigned>(law.time >> 12);
  const typename Samples::template Fraction<12> fraction(law.time & 4095);
  return loadBetween<Samples, BpmSyncDelayLaw::kLineLength>(law.line(line), near, fraction);
}

/// The input less the fed-back tap, each with its own Q15 gain. Both have 30 fractional bits; 7 and then 8 are shifted
/// out, so that the difference fits 32 bits.
template <typename Samples>
Samples lessTap(Samples input, std::int32_t inputGain, Samples tap, std::int32_t feedback) {
  const auto direct = weightedSum(input, tap, typename Samples::Weights(inputGain, 0)).template shiftedRight<7>();
  const auto fedBack = weightedSum(input, tap, typename Samples::Weights(0, feedback)).template shiftedRight<7>();
  return (direct - fedBack).template shiftedRight<8>().saturated();
}

/// The next samples of both channels, in place. The caller must set `law.taps` afterwards.
template <typename Samples>
void stepAs(BpmSyncDelayLaw& law, std::int16_t* left, std::int16_t* right) {
  constexpr unsigned kLength = BpmSyncDelayLaw::kLineLength;
  // A sample hears the tap that was read when the sample before it was written.
  const unsigned position = law.writeIndex - 1;
  const auto tapLeft = tapAt<Samples>(law, 0, position);
  const auto tapRight = tapAt<Samples>(law, 1, position);
  const auto outRight = lessTap(Samples::load(right), law.inputGain.value(), tapRight, law.feedback.value());
  const auto outLeft = lessTap(Samples::load(left), law.inputGain.value(), tapLeft, law.feedback.value());
  outRight.store(right);
  outLeft.store(left);
  storeToRing<kLength>(law.line(0), law.writeIndex, outRight);
  storeToRing<kLength>(law.line(1), law.writeIndex, outLeft);
  law.moveOn(Samples::kCount);
}

/// A run in lanes, after which the taps are those of its last sample.
template <typename Samples>
unsigned runDelay(BpmSyncDelayLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) SIVRAY_NONBLOCKING {
  const unsigned done = runLanes<Samples>(law, left, right, count);
  law.taps = law.lastTaps();
  return done;
}

}  // namespace tesh::bramel::plugin::sivray::effects
