// The law of the state-variable filter over the registers of an instruction set. SampleLanes.h tells where this may be
// included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/filters/SivrayFxTolvanFilter.h"
#include "effects/interfaces/StereoLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// (value * factor) >> 23 in 64 bits, for values within +-2^25 and factors of 0 to 2^25.
template <typename R>
StereoIn<R> mulShift23(StereoIn<R> value, StereoIn<R> factor) {
  if constexpr (cofu::registers::SignedProducts<R>) {
    return signedProduct<23>(value, factor);
  } else {
    // The instruction multiplies unsigned values: 2^25 is added first, and its share of the product, an integer, is
    // subtracted afterwards.
    const StereoIn<R> raised = value + StereoIn<R>::both(1 << 25);
    const StereoIn<R> product = R::template shiftRightUnsigned64<23>(R::mulEvenUnsigned32(raised.v, factor.v));
    return product - StereoIn<R>(R::template shiftLeft32<2>(factor.v));
  }
}

/// v * -8388606 / 2^23 for 24-bit values, as v / 2^22 - v: inverts the sign and attenuates slightly.
template <typename R>
StereoIn<R> leak23(StereoIn<R> v) {
  return v.template shiftedRight<22>() - v;
}

template <typename R>
void advance(TolvanRamp& ramp) {
  ramp.now = StereoIn<R>(ramp.now) + StereoIn<R>(ramp.step);
}

/// One sample of both channels. Without SSE4.1, most of the time goes into the limits.
template <typename R, TolvanMode kMode>
void stepFilter(TolvanFilter& filter, std::int16_t& left, std::int16_t& right) {
  using Lanes = StereoIn<R>;
  constexpr std::int32_t kFull = TolvanFilter::kFull24;
  const Lanes damping = filter.damping.now;
  const Lanes frequency = filter.frequency.now;
  const Lanes input = (Lanes::of(left, right) * Lanes(filter.inputGain)).template shiftedRight<6>();
  const Lanes a = leak23(leak23(Lanes(filter.band)));
  const Lanes b = leak23(leak23(Lanes(filter.low)));
  const Lanes high = limited(input - mulShift23(a, damping) - b, kFull);
  const Lanes band = limited(mulShift23(high, frequency) + a, kFull);
  const Lanes low = limited(mulShift23(band, frequency) + b, kFull);
  filter.band = band;
  filter.low = low;
  const Lanes out = kMode == TolvanMode::kLowpass ? low : (kMode == TolvanMode::kHighpass ? high : band);
  out.template shiftedRight<9>().storeSaturated(left, right);
  advance<R>(filter.damping);
  advance<R>(filter.frequency);
}

}  // namespace tesh::bramel::plugin::sivray::effects
