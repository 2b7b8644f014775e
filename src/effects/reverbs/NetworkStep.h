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

/// The sample of a line that was written `delay` samples ago.
template <typename Samples>
Samples delayedIn(const ReverbNetwork& network, unsigned line, unsigned delay) {
  return loadFromRing<Samples, ReverbNetwork::kLineLength>(network.line(line), network.writeIndex - delay);
}

template <typename Samples>
void putInto(const ReverbNetwork& network, unsigned line, Samples samples) {
  storeToRing<ReverbNetwork::kLineLength>(network.line(line), network.writeIndex, samples);
}

template <typename Samples>
Samples allPass(const ReverbNetwork& network, unsigned line, unsigned delay, Samples input) {
  const typename Samples::Gain gain(ReverbNetwork::kAllPassGain);
  const Samples delayed = leakTwice(delayedIn<Samples>(network, line, delay));
  const Samples inner = difference(input, mul15(delayed, gain));
  putInto(network, line, inner);
  return sum(mul15(inner, gain), delayed);
}

/// Processes the next samples by the network; the combs feed back `feedbackQ15`.
template <typename Samples>
NetworkOutput<Samples> stepNetwork(ReverbNetwork& network, Samples input, std::int32_t feedbackQ15) {
  using Network = ReverbNetwork;
  const typename Samples::Gain feedback(feedbackQ15);
  const Samples echo0 = leakTwice(delayedIn<Samples>(network, 0, Network::kComb0Delay));
  const Samples comb0 = sum(input, mul15(echo0, feedback));
  // The leak also inverts the sign of this comb's echoes.
  const Samples kept =
      mul15(delayedIn<Samples>(network, 1, Network::kComb1Delay), typename Samples::Gain(Network::kComb1Kept));
  const Samples comb1 = sum(input, mul15(leak(kept), feedback));
  putInto(network, 0, comb0);
  putInto(network, 1, comb1);
  const Samples diffused = allPass(network, 2, Network::kAllPass1Delay, sum(comb0, comb1));
  const Samples early = allPass(network, 3, Network::kAllPass2Delay, diffused);
  const Samples late = delayedIn<Samples>(network, 4, Network::kOutputDelay);
  putInto(network, 4, early);
  network.moveOn(Samples::kCount);
  return {early, late};
}

/// Computes the next samples of both channels, in place: the dry sound plus the network's output, processed by
/// `shaped`.
template <typename Samples, typename Shape>
void stepReverb(ReverbNetwork& network, std::int32_t inputGain, std::int32_t feedback, std::int16_t* left,
                std::int16_t* right, Shape shaped) {
  const Samples dryLeft = Samples::load(left);
  const Samples dryRight = Samples::load(right);
  const auto wet = stepNetwork(network, monoOf(dryLeft, dryRight, inputGain), feedback);
  sum(dryRight, shaped(wet.late)).store(right);
  sum(dryLeft, mul15(shaped(wet.early), typename Samples::Gain(ReverbNetwork::kEarlyGain))).store(left);
}

template <typename Samples>
void stepAs(RoomReverbLaw& law, std::int16_t* left, std::int16_t* right) {
  const std::int32_t wetLevel = law.level.value();
  const typename Samples::Gain level(wetLevel);
  const auto shaped = [&level](Samples wet) { return mul15(wet, level); };
  stepReverb<Samples>(law, RoomReverbLaw::inputGainFor(wetLevel), law.feedback.value(), left, right, shaped);
}

/// The gate has already been computed.
template <typename Samples>
void stepAs(GateReverb& law, std::int16_t* left, std::int16_t* right) {
  const Samples gate = Samples::load(law.gains);
  law.gains += Samples::kCount;
  const typename Samples::Gain level(law.level.value());
  const auto shaped = [&](Samples wet) { return mul15(mul15(wet, gate), level); };
  stepReverb<Samples>(law, GateReverb::kInputLevel, GateReverb::kFeedback, left, right, shaped);
}

/// A run of at most `kControlGrid` samples. First the gate, which must be computed sample by sample, then the rest.
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
