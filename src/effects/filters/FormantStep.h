// The law of the talking modulator: its four bands side by side, over the registers of an instruction set.
// SampleLanes.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/filters/SivrayFxTalkingModulator.h"
#include "effects/interfaces/WordLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Inverts the sign and attenuates slightly, so that the sound decays; Q15.
inline constexpr std::int32_t kFormantLeak = -32766;

/// v * kFormantLeak of a 16-bit value. Uses shifts, which have a lower latency than a product, because the next sample
/// waits for it.
template <typename Words>
Words timesFormantLeak(Words v) {
  return v + v - v.template shiftedLeft<15>();
}

/// Products of 16-bit values. The instruction adds the products of the low and of the high words of each lane, so one
/// of the high words must be cleared.
template <typename R>
lanes::WordsIn<R> shortProduct(lanes::WordsIn<R> a, lanes::WordsIn<R> b) {
  return {R::pairSums16(a.v, R::bitAnd(b.v, R::all32(0xFFFF)))};
}

/// Limits to -32768 .. 32767, for a factor of `shortProduct`, which ignores the high words.
template <typename R>
lanes::WordsIn<R> limitedFactor(lanes::WordsIn<R> v) {
  const typename R::Integers words = R::packed32(v.v, v.v);
  return {R::zipLow16(words, words)};
}

/// Limits to -32768 .. 32767.
template <typename R>
lanes::WordsIn<R> limited16(lanes::WordsIn<R> v) {
  return limitedFactor(v).template shiftedRight<16>();
}

/// One sample: the mono input through all resonators, whose band outputs are summed. `band` and `low` hold 16-bit
/// values; their fractions are never read.
template <typename R>
void stepFormants(TalkingModulatorLaw& law, std::int16_t& left, std::int16_t& right) {
  using Words = lanes::WordsIn<R>;  // A lane for each band.
  /// The reciprocal of the resonators' Q of 26; Q15.
  constexpr std::int32_t kDamping = 1241;
  const auto& f = law.frequency;
  const Words frequency{R::four32(f[0].value(), f[1].value(), f[2].value(), f[3].value())};
  const Words onceA = leak(Words{law.band});
  const Words a = shortProduct(onceA, Words::all(kFormantLeak));
  const Words b = timesFormantLeak(leak(Words{law.low}));
  const Words in = Words::all(((left + right) >> 1) * 16384);
  const Words damped = shortProduct(leak(onceA), Words::all(kDamping));
  const Words high = limitedFactor((in - damped - b).template shiftedRight<15>());
  const Words band = limited16((shortProduct(high, frequency) + a).template shiftedRight<15>());
  law.band = band.v;
  law.low = limited16((shortProduct(band, frequency) + b).template shiftedRight<15>()).v;
  left = static_cast<std::int16_t>(cofu::core::saturate(R::sum32(band.v)));
  right = left;
}

}  // namespace tesh::bramel::plugin::sivray::effects
