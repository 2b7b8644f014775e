// Consecutive samples of one channel side by side in the 16-bit lanes of a register, for laws whose feedback is older
// than a register: such a law computes as many samples at once as there are lanes.
//
// There are three kinds with the same operations and results: OneSample, and SamplesIn over registers of 128 and of 256
// bits. A law is a template over them, `stepAs<Samples>(law, left, right)`, which advances by `Samples::kCount`
// samples. The template has its own header, and LaneRun.h has rings and loops. It is instantiated in three places:
//   - the law's `step`, with OneSample: it serves while a value glides, where feedback is too short, and for the rest
//     of a block;
//   - the law's `runBaseline`, in the law's source file;
// EffectsAvx2.cpp includes all templates between the marks of core/VectorCode.h, with Lanes256.h first. It includes
// what they share with other files before the marks: OneSample.h, Registers128.h and the headers of the laws. Therefore
// a law's header must not include a template, LaneRun.h or this header. Operations are templates outside of their
// class, because GCC may compile a friend of a template without AVX2.
//
// Lanes hold -32768 .. 32767. A result must fit them too, unless an operation is documented to limit it. +, - and mul15
// of samples wrap in lanes: a result that fits is correct even if an intermediate one does not fit.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/OneSample.h"
#include "effects/interfaces/WordLanes.h"
#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray::effects::lanes {

/// A register's samples in 32 bits each: those of the lower half, then those of the upper half of each 128 bits.
template <cofu::registers::IntegerRegisters R>
struct WideIn;

/// A position between two neighbours.
template <cofu::registers::IntegerRegisters R, int kBits>
struct FractionIn {
  explicit FractionIn(std::int32_t fraction) : FractionIn(SplitFraction(fraction, kBits)) {}
  explicit FractionIn(SplitFraction split)
      : weights(R::all32(pairOfWords(split.near, split.beyond))), shift(R::count(split.bits)) {}
  typename R::Integers weights;
  typename R::Count shift;
};

/// As many samples as a register of `R` holds. OneSample describes the operations.
template <cofu::registers::IntegerRegisters R>
struct SamplesIn {
  using Integers = typename R::Integers;
  static constexpr unsigned kCount = R::kBytes / sizeof(std::int16_t);
  using Words = WordsIn<R>;
  static constexpr unsigned kWords = kCount / Words::kCount;
  using Wide = WideIn<R>;
  template <int kBits>
  using Fraction = FractionIn<R, kBits>;

  struct Gain {
    explicit Gain(std::int32_t gainQ15) : Gain(SplitGain(gainQ15)) {}
    explicit Gain(SplitGain split) : doubled(R::all16(split.doubled)), carried(R::all16(split.carried)) {}
    Integers doubled;
    Integers carried;
  };

  struct Weights {
    Weights(std::int32_t first, std::int32_t second) : pairs(R::all32(pairOfWords(first, second))) {}
    Integers pairs;
  };

  struct Boost {
    explicit Boost(std::int32_t gainQ15) : Boost(SplitBoost(gainQ15)) {}
    explicit Boost(SplitBoost split) : part(split.part), once(R::all16(split.once)), twice(R::all16(split.twice)) {}
    Gain part;
    Integers once;
    Integers twice;
  };

  Integers v;

  static SamplesIn all(std::int16_t sample) { return {R::all16(sample)}; }
  static SamplesIn of(const Words* words) { return {R::inOrder(R::packed32(words[0].v, words[1].v))}; }
  static SamplesIn lowerHalvesOf(const Words* words) {
    const Words halves[]{words[0].lowerHalves(), words[1].lowerHalves()};
    return of(halves);
  }
  static SamplesIn load(const std::int16_t* samples) { return {R::load(samples)}; }
  void store(std::int16_t* samples) const { R::store(samples, v); }

  /// Limits -32768 to -32767.
  static SamplesIn limited(Integers v) { return {R::max16(v, R::all16(-cofu::core::kFullScale))}; }
};

template <cofu::registers::IntegerRegisters R>
struct WideIn {
  typename R::Integers low;
  typename R::Integers high;

  template <int kBits>
  WideIn shiftedRight() const {
    return {R::template shiftRight32<kBits>(low), R::template shiftRight32<kBits>(high)};
  }
  SamplesIn<R> saturated() const { return SamplesIn<R>::limited(R::packed32(low, high)); }
  SamplesIn<R> packed() const { return {R::packed32(low, high)}; }
  SamplesIn<R> narrowed() const { return packed(); }
};

template <typename R>
WideIn<R> operator+(WideIn<R> a, WideIn<R> b) {
  return {R::add32(a.low, b.low), R::add32(a.high, b.high)};
}

template <typename R>
WideIn<R> operator-(WideIn<R> a, WideIn<R> b) {
  return {R::sub32(a.low, b.low), R::sub32(a.high, b.high)};
}

template <typename R>
SamplesIn<R> oneLater(SamplesIn<R> a, std::int16_t& previous) {
  const typename R::Integers later = R::after16(a.v, previous);
  previous = R::last16(a.v);
  return {later};
}

template <typename R>
SamplesIn<R> operator+(SamplesIn<R> a, SamplesIn<R> b) {
  return {R::add16(a.v, b.v)};
}

template <typename R>
SamplesIn<R> operator-(SamplesIn<R> a, SamplesIn<R> b) {
  return {R::sub16(a.v, b.v)};
}

template <typename R>
SamplesIn<R> sum(SamplesIn<R> a, SamplesIn<R> b) {
  return SamplesIn<R>::limited(R::addLimited16(a.v, b.v));
}

template <typename R>
SamplesIn<R> difference(SamplesIn<R> a, SamplesIn<R> b) {
  return SamplesIn<R>::limited(R::subLimited16(a.v, b.v));
}

template <typename R>
SamplesIn<R> mul15(SamplesIn<R> a, const typename SamplesIn<R>::Gain& gain) {
  return {R::add16(R::mulHigh16(a.v, gain.doubled), R::mulLow16(a.v, gain.carried))};
}

template <typename R>
SamplesIn<R> mul15(SamplesIn<R> a, SamplesIn<R> gain) {
  const typename R::Integers upper = R::mulHigh16(a.v, gain.v);
  return {R::bitOr(R::add16(upper, upper), R::template shiftRightUnsigned16<15>(R::mulLow16(a.v, gain.v)))};
}

template <typename R>
SamplesIn<R> leak(SamplesIn<R> a) {
  return {R::sub16(R::template shiftRight16<14>(a.v), a.v)};
}

template <typename R>
WideIn<R> weightedSum(SamplesIn<R> a, SamplesIn<R> b, const typename SamplesIn<R>::Weights& weights) {
  return {R::pairSums16(R::zipLow16(a.v, b.v), weights.pairs), R::pairSums16(R::zipHigh16(a.v, b.v), weights.pairs)};
}

template <typename R>
WideIn<R> weightedSum(SamplesIn<R> a, SamplesIn<R> b, SamplesIn<R> ofA, SamplesIn<R> ofB) {
  return {R::pairSums16(R::zipLow16(a.v, b.v), R::zipLow16(ofA.v, ofB.v)),
          R::pairSums16(R::zipHigh16(a.v, b.v), R::zipHigh16(ofA.v, ofB.v))};
}

template <typename R>
SamplesIn<R> boosted(SamplesIn<R> a, const typename SamplesIn<R>::Boost& boost) {
  const typename R::Integers single = R::addLimited16(mul15(a, boost.part).v, R::bitAnd(a.v, boost.once));
  return SamplesIn<R>::limited(R::addLimited16(single, R::bitAnd(R::addLimited16(a.v, a.v), boost.twice)));
}

template <int kBits, typename R>
SamplesIn<R> between(SamplesIn<R> near, SamplesIn<R> beyond, const FractionIn<R, kBits>& place) {
  const auto sums = [&place](typename R::Integers pairs) {
    return R::shiftRight32(R::pairSums16(pairs, place.weights), place.shift);
  };
  return {R::packed32(sums(R::zipLow16(near.v, beyond.v)), sums(R::zipHigh16(near.v, beyond.v)))};
}

template <typename R>
SamplesIn<R> nearerZeroWhereEqual(SamplesIn<R> a, SamplesIn<R> b) {
  return {R::nearerZero16(a.v, R::equal16(a.v, b.v))};
}

template <cofu::registers::HasHalves R>
Two<SamplesIn<typename R::Half>> saturatedSamples(WordsIn<R> a, WordsIn<R> b) {
  const typename R::Integers both = SamplesIn<R>::limited(R::inOrder(R::packed32(a.v, b.v))).v;
  return {{R::lower(both)}, {R::upper(both)}};
}

/// As many samples as a register of `R`, which has no halves, holds words.
template <typename R>
struct FewSamplesIn {
  static constexpr unsigned kCount = WordsIn<R>::kCount;

  typename R::Integers v;

  void store(std::int16_t* samples) const { R::store64(samples, v); }
};

template <typename R>
requires(!cofu::registers::HasHalves<R>) Two<FewSamplesIn<R>> saturatedSamples(WordsIn<R> a, WordsIn<R> b) {
  const typename R::Integers both = SamplesIn<R>::limited(R::packed32(a.v, b.v)).v;
  return {{both}, {R::zipHigh64(both, both)}};
}

/// Eight samples.
using Samples128 = SamplesIn<cofu::registers::Registers128>;
static_assert(SampleKind<Samples128>);

}  // namespace tesh::bramel::plugin::sivray::effects::lanes

namespace tesh::bramel::plugin::sivray::effects {
using lanes::Samples128;
}  // namespace tesh::bramel::plugin::sivray::effects
