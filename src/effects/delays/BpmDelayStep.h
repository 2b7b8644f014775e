// The law of the tempo-synchronised delay: its run in lanes, and the code that its sample-by-sample form shares.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/delays/SivrayFxBpmSyncDelay.h"
#include "effects/interfaces/LaneRun.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Reads line 0 or 1 `time` samples before `position`, interpolated between two samples (12 bits of fraction).
template <typename Samples>
Samples tapAt(const BpmSyncDelayLaw& law, unsigned line, unsigned position) {
  const unsigned near = position - static_cast<unsigned>(law.time >> 12);
  const typename Samples::template Fraction<12> fraction(law.time & 4095);
  return loadBetween<Samples, BpmSyncDelayLaw::kLineLength>(law.line(line), near, fraction);
}

/// The input less the fed-back tap, each with its own Q15 gain. Both products have 30 fractional bits; they are shifted
/// by 7 and then by 8, so that the difference fits 32 bits.
template <typename Samples>
Samples lessTap(Samples input, std::int32_t inputGain, Samples tap, std::int32_t feedback) {
  const auto direct = weightedSum(input, tap, typename Samples::Weights(inputGain, 0)).template shiftedRight<7>();
  const auto fedBack = weightedSum(input, tap, typename Samples::Weights(0, feedback)).template shiftedRight<7>();
  return (direct - fedBack).template shiftedRight<8>().saturated();
}

/// Computes the next samples of both channels, in place. The caller must set `law.taps` afterwards.
template <typename Samples>
void stepAs(BpmSyncDelayLaw& law, std::int16_t* left, std::int16_t* right) {
  constexpr unsigned kLength = BpmSyncDelayLaw::kLineLength;
  // A sample uses the tap that was read when the sample before it was written.
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

/// A run in lanes. Afterwards the taps are those of its last sample.
template <typename Samples>
unsigned runDelay(BpmSyncDelayLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) SIVRAY_NONBLOCKING {
  const unsigned done = runLanes<Samples>(law, left, right, count);
  law.taps = law.lastTaps();
  return done;
}

}  // namespace tesh::bramel::plugin::sivray::effects
