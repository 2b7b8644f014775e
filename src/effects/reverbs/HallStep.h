// The law of the hall, sample by sample or in lanes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/LaneRun.h"
#include "effects/reverbs/HallDamperStep.h"
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"

namespace tesh::bramel::plugin::sivray::effects {

/// What was written to ring `k` of the tank `delays[k]` samples before `position`.
template <typename Samples>
Samples tankAt(const HallFlow& flow, std::size_t k, const HallDelays& delays, unsigned position) {
  return loadFromRing<Samples, kTankLength>(flow.tank(k), position - delays[k]);
}

/// Half the sum of the four taps.
template <typename Samples>
Samples halfOfTaps(const HallFlow& flow, const HallDelays& taps, unsigned position) {
  const typename Samples::Weights both(1, 1);
  const auto of01 =
      weightedSum(tankAt<Samples>(flow, 0, taps, position), tankAt<Samples>(flow, 1, taps, position), both);
  const auto of23 =
      weightedSum(tankAt<Samples>(flow, 2, taps, position), tankAt<Samples>(flow, 3, taps, position), both);
  return (of01 + of23).template shiftedRight<1>().saturated();
}

/// The early sound on top of the predelayed one.
template <typename Samples>
Samples delayedInput(const HallFlow& flow, Samples mono) {
  storeToRing<kPredelayLength>(flow.memory, flow.position, mono);
  const Samples delayed = loadFromRing<Samples, kPredelayLength>(flow.memory, flow.position - kPredelay);
  return sum(delayed, mul15(mono, typename Samples::Gain(HallFlow::kEarlyGain)));
}

/// All-pass `k`. The sound inside it is limited where it is stored, but not on its way to the output.
template <typename Samples>
Samples diffused(const HallFlow& flow, std::size_t k, Samples input) {
  const std::int32_t coefficient = kDiffuserCoefficients[k];
  const auto tap = loadFromRing<Samples, kDiffuserLength>(flow.diffuser(k), flow.position - kDiffuserDelays[k]);
  const Samples fedBack = mul15(tap, typename Samples::Gain(coefficient));
  storeToRing<kDiffuserLength>(flow.diffuser(k), flow.position, sum(fedBack, input));
  const auto inner = weightedSum(fedBack, input, typename Samples::Weights(coefficient, coefficient));
  return difference(tap, inner.template shiftedRight<15>().saturated());
}

/// The four damped combs, all fed with the same sound.
template <typename Samples>
void stepTank(HallFlow& flow, Samples fed) {
  Combs<Samples> combs;
  for (std::size_t k = 0; k < kHallLanes; ++k) {
    const typename Samples::Gain gain(flow.gains[k]);
    combs[k] = sum(mul15(tankAt<Samples>(flow, k, kTankDelays, flow.position), gain), fed);
  }
  damp(flow.dampers, combs);
  for (std::size_t k = 0; k < kHallLanes; ++k) {
    storeToRing<kTankLength>(flow.tank(k), flow.position, combs[k]);
  }
}

/// The level of the wet sound, which glides sample by sample.
template <typename Samples>
Samples nextLevels(HallFlow& flow) {
  if (flow.level.restsAt(flow.levelTarget)) {
    return Samples::all(static_cast<std::int16_t>(flow.level.value()));
  }
  std::int16_t levels[Samples::kCount];
  for (std::int16_t& level : levels) {
    flow.level.glide(flow.levelTarget, kGlide);
    level = static_cast<std::int16_t>(flow.level.value());
  }
  return Samples::load(levels);
}

/// The next samples of both channels, in place. The second diffuser hears the first one a sample late, and those of the
/// output hear the tank's taps a sample late.
template <typename Samples>
void stepAs(HallFlow& flow, std::int16_t* left, std::int16_t* right) {
  const Samples dryLeft = sum(Samples::load(left), Samples::all(0));
  const Samples dryRight = sum(Samples::load(right), Samples::all(0));
  const typename Samples::Weights inputScale(HallFlow::kInputScale, HallFlow::kInputScale);
  const Samples mono = weightedSum(dryLeft, dryRight, inputScale).template shiftedRight<15>().saturated();

  const unsigned before = flow.position - 1;
  const Samples wetLeft = diffused(flow, 2, halfOfTaps<Samples>(flow, kTapsB, before));
  const Samples wetRight = diffused(flow, 3, halfOfTaps<Samples>(flow, kTapsA, before));
  const Samples first = diffused(flow, 0, delayedInput(flow, mono));
  const Samples fed = diffused(flow, 1, oneLater(first, flow.firstDiffused));
  stepTank(flow, fed);
  flow.position += Samples::kCount;

  const Samples levels = nextLevels<Samples>(flow);
  sum(mul15(wetLeft, levels), dryLeft).store(left);
  sum(mul15(wetRight, levels), dryRight).store(right);
}

}  // namespace tesh::bramel::plugin::sivray::effects
