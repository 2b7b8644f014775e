// The law of the hall, sample by sample or in lanes; the dampers are computed first. LaneRun.h tells where this may be
// included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/LaneRun.h"
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"

namespace tesh::bramel::plugin::sivray::effects {

/// One value per comb.
template <typename Samples>
using Combs = std::array<Samples, kHallLanes>;

/// Replaces the next sample of each comb by its z.
inline void damp(HallDampers& dampers, Combs<OneSample>& combs) {
  using namespace cofu::core;
  for (std::size_t k = 0; k < kHallLanes; ++k) {
    const std::int32_t comb = combs[k].v;
    dampers.last[k] = saturate(mul15(dampers.last[k] + comb, dampers.ofLast[2 * k]) - comb);
    combs[k].v = dampers.last[k];
  }
}

/// Eight samples of each comb in registers of 128 bits. Computes z as (z * damper + comb * (damper - 1.0)) >> 15: the
/// same value, but its second product does not depend on the last z. Needs no limit, because apart from its sign z lies
/// between the last z and the comb.
template <typename R>
class EightDamped {
  using Integers = typename R::Integers;

 public:
  explicit EightDamped(HallDampers& from)
      : dampers(from),
        z(R::load(from.last.data())),
        ofLast(R::load(from.ofLast.data())),
        ofComb(R::load(from.ofComb.data())) {}

  void damp(Combs<lanes::SamplesIn<R>>& combs) {
    const FourRows first = fourSamples(R::zipLow16(combs[0].v, combs[1].v), R::zipLow16(combs[2].v, combs[3].v));
    const FourRows second = fourSamples(R::zipHigh16(combs[0].v, combs[1].v), R::zipHigh16(combs[2].v, combs[3].v));
    combs[0].v = R::zipLow64(first.of01, second.of01);
    combs[1].v = R::zipHigh64(first.of01, second.of01);
    combs[2].v = R::zipLow64(first.of23, second.of23);
    combs[3].v = R::zipHigh64(first.of23, second.of23);
  }

  void finish() const { R::store(dampers.last.data(), z); }

 private:
  /// Four samples of combs 0 and 1, and of combs 2 and 3.
  struct FourRows {
    Integers of01;
    Integers of23;
  };

  /// Takes combs 0 and 1 interleaved, and combs 2 and 3 interleaved.
  FourRows fourSamples(Integers of01, Integers of23) {
    const Integers rows01 = twoRows(R::zipLow32(of01, of23));
    const Integers rows23 = twoRows(R::zipHigh32(of01, of23));
    const Integers even = R::zipLow16(rows01, rows23);
    const Integers odd = R::zipHigh16(rows01, rows23);
    return {R::zipLow16(even, odd), R::zipHigh16(even, odd)};
  }

  /// A row holds one sample of each comb. Returns the dampers' outputs for two rows.
  Integers twoRows(Integers rows) {
    const Integers first = row(R::zipLow16(rows, R::zero()));
    const Integers second = row(R::zipHigh16(rows, R::zero()));
    return R::packed32(first, second);
  }

  /// The combs are in the lower words of the lanes; the upper words are ignored.
  Integers row(Integers comb) {
    z = R::template shiftRight32<15>(R::add32(R::pairSums16(z, ofLast), R::pairSums16(comb, ofComb)));
    return z;
  }

  HallDampers& dampers;
  Integers z;
  Integers ofLast;
  Integers ofComb;
};

/// One register per comb. For registers with two halves, processes all lower halves, then all upper ones.
template <typename R>
void damp(HallDampers& dampers, Combs<lanes::SamplesIn<R>>& combs) {
  if constexpr (requires { typename R::Half; }) {
    EightDamped<typename R::Half> eight(dampers);
    Combs<lanes::SamplesIn<typename R::Half>> lower;
    Combs<lanes::SamplesIn<typename R::Half>> upper;
    for (std::size_t k = 0; k < kHallLanes; ++k) {
      lower[k].v = R::lower(combs[k].v);
      upper[k].v = R::upper(combs[k].v);
    }
    eight.damp(lower);
    eight.damp(upper);
    eight.finish();
    for (std::size_t k = 0; k < kHallLanes; ++k) {
      combs[k].v = R::joined(lower[k].v, upper[k].v);
    }
  } else {
    EightDamped<R> eight(dampers);
    eight.damp(combs);
    eight.finish();
  }
}

/// The sample in ring `k` of the tank that was written `delays[k]` samples before `position`.
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

/// The early reflections plus the predelayed sound.
template <typename Samples>
Samples delayedInput(const HallFlow& flow, Samples mono) {
  storeToRing<kPredelayLength>(flow.memory, flow.position, mono);
  const Samples delayed = loadFromRing<Samples, kPredelayLength>(flow.memory, flow.position - kPredelay);
  return sum(delayed, mul15(mono, typename Samples::Gain(HallFlow::kEarlyGain)));
}

/// All-pass `k`. Its inner signal is limited where it is stored, but not on the way to the output.
template <typename Samples>
Samples diffused(const HallFlow& flow, std::size_t k, Samples input) {
  const std::int32_t coefficient = kDiffuserCoefficients[k];
  const auto tap = loadFromRing<Samples, kDiffuserLength>(flow.diffuser(k), flow.position - kDiffuserDelays[k]);
  const Samples fedBack = mul15(tap, typename Samples::Gain(coefficient));
  storeToRing<kDiffuserLength>(flow.diffuser(k), flow.position, sum(fedBack, input));
  const auto inner = weightedSum(fedBack, input, typename Samples::Weights(coefficient, coefficient));
  return difference(tap, inner.template shiftedRight<15>().saturated());
}

/// The four damped combs, which all have the same input.
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

/// The level of the wet sound, smoothed sample by sample.
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

/// Computes the next samples of both channels, in place. The second diffuser reads the first one a sample late, and the
/// output diffusers read the tank's taps a sample late.
template <typename Samples>
void stepAs(HallFlow& flow, std::int16_t* left, std::int16_t* right) {
  const Samples dryLeft = sum(Samples::load(left), Samples::all(0));
  const Samples dryRight = sum(Samples::load(right), Samples::all(0));
  const Samples mono = monoOf(dryLeft, dryRight, HallFlow::kInputScale);

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
