// The law of the talking modulator: its four bands side by side, over the registers of an instruction set.
// SampleLanes.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/filters/SivrayFxTalkingModulator.h"
#include "registers/RegisterConcepts.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace lanes {

/// A 32-bit value for each band. Sums and differences wrap.
template <cofu::registers::IntegerRegisters R>
struct FormantsIn {
  using Integers = typename R::Integers;

  Integers v;

  static FormantsIn all(std::int32_t value) { return {R::all32(value)}; }

  template <int kBits>
  FormantsIn shiftedRight() const {
    return {R::template shiftRight32<kBits>(v)};
  }
  template <int kBits>
  FormantsIn shiftedLeft() const {
    return {R::template shiftLeft32<kBits>(v)};
  }
  /// Limits to -32768 .. 32767.
  FormantsIn limited16() const { return limitedFactor().template shiftedRight<16>(); }
  /// The same for a value that is only multiplied: a product does not look at the high words.
  FormantsIn limitedFactor() const {
    const Integers words = R::packed32(v, v);
    return {R::zipLow16(words, words)};
  }
};

template <typename R>
FormantsIn<R> operator+(FormantsIn<R> a, FormantsIn<R> b) {
  return {R::add32(a.v, b.v)};
}

template <typename R>
FormantsIn<R> operator-(FormantsIn<R> a, FormantsIn<R> b) {
  return {R::sub32(a.v, b.v)};
}

/// Products of 16-bit values. The instruction adds the products of the low and of the high words of each lane: one high
/// word has to be cleared.
template <typename R>
FormantsIn<R> operator*(FormantsIn<R> a, FormantsIn<R> b) {
  return {R::pairSums16(a.v, R::bitAnd(b.v, R::all32(0xFFFF)))};
}

}  // namespace lanes

/// Turns the sign and takes a little off, so that a sound dies out; Q15.
inline constexpr std::int32_t kFormantLeak = -32766;

/// v * kFormantLeak of a 16-bit value. For what the next sample waits for, shifts are faster than a product.
template <typename Lanes>
Lanes timesFormantLeak(Lanes v) {
  return v + v - v.template shiftedLeft<15>();
}

/// (v * kFormantLeak) >> 15.
template <typename Lanes>
Lanes formantLeaked(Lanes v) {
  return v.template shiftedRight<14>() - v;
}

/// One sample: the mono input through all resonators, whose band outputs are summed. `band` and `low` hold 16-bit
/// values: nothing below the point is ever read.
template <typename R>
void stepFormants(TalkingModulatorLaw& law, std::int16_t& left, std::int16_t& right) {
  using Lanes = lanes::FormantsIn<R>;
  /// The reciprocal of the resonators' Q of 26; Q15.
  constexpr std::int32_t kDamping = 1241;
  const auto& f = law.frequency;
  const Lanes frequency{R::four32(f[0].value(), f[1].value(), f[2].value(), f[3].value())};
  const Lanes onceA = formantLeaked(Lanes{law.band});
  const Lanes a = onceA * Lanes::all(kFormantLeak);
  const Lanes b = timesFormantLeak(formantLeaked(Lanes{law.low}));
  const Lanes in = Lanes::all(((left + right) >> 1) * 16384);
  const Lanes high = (in - formantLeaked(onceA) * Lanes::all(kDamping) - b).template shiftedRight<15>().limitedFactor();
  const Lanes band = (high * frequency + a).template shiftedRight<15>().limited16();
  law.band = band.v;
  law.low = (band * frequency + b).template shiftedRight<15>().limited16().v;
  left = static_cast<std::int16_t>(cofu::core::saturate(R::sum32(band.v)));
  right = left;
}

}  // namespace tesh::bramel::plugin::sivray::effects
