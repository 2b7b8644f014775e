// The law of the state-variable filter, as a template over the arithmetic of an instruction set.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/filters/SivrayFxTolvanFilter.h"

namespace tesh::bramel::plugin::sivray::effects {

/// v * -8388606 / 2^23 for 24-bit values, as v / 2^22 - v: turns the sign and takes a little off.
template <typename Arithmetic>
StereoLanes leak23(StereoLanes v) {
  return v.shiftedRight<22>() - v;
}

/// One sample of both channels. `Arithmetic` has the product and the limit of FilterLanes.h.
template <typename Arithmetic, TolvanMode kMode>
void stepFilter(TolvanFilter& filter, std::int16_t& left, std::int16_t& right) {
  const StereoLanes input = (StereoLanes::of(left, right) * filter.inputGain).shiftedRight<6>();
  const StereoLanes a = leak23<Arithmetic>(leak23<Arithmetic>(filter.band));
  const StereoLanes b = leak23<Arithmetic>(leak23<Arithmetic>(filter.low));
  const StereoLanes high = Arithmetic::limited24(input - Arithmetic::mulShift23(a, filter.damping.now) - b);
  filter.band = Arithmetic::limited24(Arithmetic::mulShift23(high, filter.frequency.now) + a);
  filter.low = Arithmetic::limited24(Arithmetic::mulShift23(filter.band, filter.frequency.now) + b);
  const StereoLanes out =
      kMode == TolvanMode::kLowpass ? filter.low : (kMode == TolvanMode::kHighpass ? high : filter.band);
  out.shiftedRight<9>().storeSaturated(left, right);
  filter.damping.advance();
  filter.frequency.advance();
}

}  // namespace tesh::bramel::plugin::sivray::effects
