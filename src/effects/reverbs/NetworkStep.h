// The small network and the two reverbs around it, sample by sample or in lanes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/LaneRun.h"
#include "effects/reverbs/GateReverb.h"
#include "effects/reverbs/ReverbNetwork.h"
#include "effects/reverbs/SivrayFxReverb.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The diffused sound, and a copy delayed by 1676 samples.
template <typename Samples>
struct NetworkOutput {
  Samples early;
  Samples late;
};

/// What was written to a line `delay` samples ago.
template <typename Samples>
Samples delayedIn(const ReverbNetwork& network, unsigned line, unsigned delay) {
  constexpr unsigned kLength = ReverbNetwork::kLineLength;
  return loadFromRing<Samples, kLength>(network.lines + line * kLength, network.writeIndex - delay);
}

template <typename Samples>
void putInto(const ReverbNetwork& network, unsigned line, Samples samples) {
  constexpr unsigned kLength = ReverbNetwork::kLineLength;
  storeToRing<kLength>(network.lines + line * kLength, network.writeIndex, samples);
}

template <typename Samples>
Samples allPass(const ReverbNetwork& network, unsigned line, unsigned delay, Samples input) {
  const typename Samples::Gain gain(ReverbNetwork::kAllPassGain);
  const Samples delayed = leakTwice(delayedIn<Samples>(network, line, delay));
  const Samples inner = difference(input, mul15(delayed, gain));
  putInto(network, line, inner);
  return sum(mul15(inner, gain), delayed);
}

/// The next samples through the network; the combs feed back `feedbackQ15`.
template <typename Samples>
NetworkOutput<Samples> stepNetwork(ReverbNetwork& network, Samples input, std::int32_t feedbackQ15) {
  using Network = ReverbNetwork;
  const typename Samples::Gain feedback(feedbackQ15);
  const Samples echo0 = leakTwice(delayedIn<Samples>(network, 0, Network::kComb0Delay));
  const Samples comb0 = sum(input, mul15(echo0, feedback));
  // This one turns the sign of its echoes.
  const Samples kept =
      mul15(delayedIn<Samples>(network, 1, Network::kComb1Delay), typename Samples::Gain(Network::kComb1Kept));
  const Samples comb1 = sum(input, mul15(leak(kept), feedback));
  putInto(network, 0, comb0);
  putInto(network, 1, comb1);
  const Samples diffused = allPass(network, 2, Network::kAllPass1Delay, sum(comb0, comb1));
  const Samples early = allPass(network, 3, Network::kAllPass2Delay, diffused);
  const Samples late = delayedIn<Samples>(network, 4, Network::kOutputDelay);
  putInto(network, 4, early);
  network.writeIndex = (network.writeIndex + Samples::kCount) & (Network::kLineLength - 1);
  return {early, late};
}

/// Both channels together, times a Q15 gain of at most a half.
template <typename Samples>
Samples monoOf(Samples left, Samples right, std::int32_t gain) {
  return weightedSum(left, right, typename Samples::Weights(gain, gain)).template shiftedRight<15>().saturated();
}

/// The next samples of both channels of the room, in place.
template <typename Samples>
void stepAs(RoomReverbLaw& law, std::int16_t* left, std::int16_t* right) {
  const Samples dryLeft = Samples::load(left);
  const Samples dryRight = Samples::load(right);
  const std::int32_t wetLevel = law.level.value();
  const Samples mono = monoOf(dryLeft, dryRight, RoomReverbLaw::inputGainFor(wetLevel));
  const auto wet = stepNetwork(law, mono, law.feedback.value());
  const typename Samples::Gain level(wetLevel);
  const typename Samples::Gain earlyGain(ReverbNetwork::kEarlyGain);
  sum(dryRight, mul15(wet.late, level)).store(right);
  sum(dryLeft, mul15(mul15(wet.early, level), earlyGain)).store(left);
}

/// The next samples of both channels of the gate reverb, in place. The gate has gone ahead.
template <typename Samples>
void stepAs(GateReverb& law, std::int16_t* left, std::int16_t* right) {
  const Samples dryLeft = Samples::load(left);
  const Samples dryRight = Samples::load(right);
  const auto wet = stepNetwork(law, monoOf(dryLeft, dryRight, GateReverb::kInputLevel), GateReverb::kFeedback);
  const Samples gate = Samples::load(law.gains);
  law.gains += Samples::kCount;
  const typename Samples::Gain level(law.level.value());
  const typename Samples::Gain earlyGain(ReverbNetwork::kEarlyGain);
  sum(dryRight, mul15(mul15(wet.late, gate), level)).store(right);
  sum(dryLeft, mul15(mul15(mul15(wet.early, gate), level), earlyGain)).store(left);
}

/// A run of at most `kControlGrid` samples. First the gate, which can only go sample by sample, then the rest.
template <typename Samples>
unsigned runGated(GateReverb& law, std::int16_t* left, std::int16_t* right, unsigned count) SIVRAY_NONBLOCKING {
  std::int16_t gains[kControlGrid];
  law.gate.follow(left, right, gains, count - count % Samples::kCount, law.holdStep);
  law.gains = gains;
  const unsigned done = runLanes<Samples>(law, left, right, count);
  law.gains = nullptr;
  return done;
}

}  // namespace tesh::bramel::plugin::sivray::effects
