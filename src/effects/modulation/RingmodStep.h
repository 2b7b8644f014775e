// The oscillator and the doubling output stage of the ring modulator, sample by sample or in lanes. LaneRun.h tells
// where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/LaneRun.h"
#include "effects/modulation/Ringmod.h"

namespace tesh::bramel::plugin::sivray::effects {

/// A sine made of two parabolas at the next phases; its peak is about 16384.
template <typename Samples>
Samples parabolicSine(std::int32_t phase, std::int32_t step) {
  using namespace cofu::core;
  using Words = typename Samples::Words;
  Words positions[Samples::kWords];
  Words slopes[Samples::kWords];
  for (unsigned i = 0; i < Samples::kWords; ++i) {
    const Words at = Words::after(wrapAdd(phase, wrapMul(step, static_cast<std::int32_t>(i * Words::kCount))), step);
    positions[i] = at.template shiftedRight<16>();
    slopes[i] = Words::all(kFullScale) - magnitude(at.template shiftedRight<15>());
  }
  const Samples position = Samples::of(positions);
  return mul15(Samples::lowerHalvesOf(slopes), position) + position;
}

/// Computes the next samples of both channels, in place. Frequency and balance must not change within a register.
template <typename Samples>
void stepAs(Ringmod& law, std::int16_t* left, std::int16_t* right) {
  using namespace cofu::core;
  const std::int32_t step = law.frequency.state;
  const std::int32_t share = law.sineShare();
  const Samples sine = mul15(parabolicSine<Samples>(law.phase, step), typename Samples::Gain(share >> 15));
  const Samples carrier = sum(sine, Samples::all(static_cast<std::int16_t>((Ringmod::kCarrierOne - share) >> 15)));
  const typename Samples::Weights balance(law.balance.value(), (Ringmod::kCarrierOne - law.balance.state) >> 15);
  for (std::int16_t* const side : {left, right}) {
    const Samples in = Samples::load(side);
    weightedSum(mul15(in, carrier), in, balance).template shiftedRight<14>().narrowed().store(side);
  }
  law.phase = wrapAdd(law.phase, wrapMul(step, static_cast<std::int32_t>(Samples::kCount)));
}

}  // namespace tesh::bramel::plugin::sivray::effects
