// Consecutive values of an oscillator in the 32-bit lanes of a register: phases, and values that a law computes from
// them before it converts them to samples. Or one value for each of four bands. OneWord describes the operations.
// SampleLanes.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/OneSample.h"
#include "registers/RegisterConcepts.h"

namespace tesh::bramel::plugin::sivray::effects::lanes {

/// As many words as a register of `R` holds.
template <cofu::registers::IntegerRegisters R>
struct WordsIn {
  static constexpr unsigned kCount = R::kBytes / sizeof(std::int32_t);

  typename R::Integers v;

  static WordsIn all(std::int32_t value) { return {R::all32(value)}; }
  static WordsIn after(std::int32_t phase, std::int32_t step) {
    return {R::add32(R::all32(phase), R::multiples32(step))};
  }
  static WordsIn load(const std::int32_t* words) { return {R::load(words)}; }
  static WordsIn ofSamples(const std::int16_t* samples) { return {R::loadWidened16(samples)}; }
  void store(std::int32_t* words) const { R::store(words, v); }

  template <typename Make>
  WordsIn mapped(Make make) const {
    return {R::mapped32(v, make)};
  }
  template <int kBits>
  WordsIn shiftedRight() const {
    return {R::template shiftRight32<kBits>(v)};
  }
  template <int kBits>
  WordsIn shiftedLeft() const {
    return {R::template shiftLeft32<kBits>(v)};
  }
  template <int kBits>
  WordsIn shiftedRightUnsigned() const {
    return {R::template shiftRightUnsigned32<kBits>(v)};
  }
  WordsIn lowerHalves() const { return {R::template shiftRight32<16>(R::template shiftLeft32<16>(v))}; }
};

template <typename R>
WordsIn<R> operator+(WordsIn<R> a, WordsIn<R> b) {
  return {R::add32(a.v, b.v)};
}

template <typename R>
WordsIn<R> operator-(WordsIn<R> a, WordsIn<R> b) {
  return {R::sub32(a.v, b.v)};
}

template <typename R>
WordsIn<R> operator*(WordsIn<R> a, WordsIn<R> b) {
  return {R::mulLow32(a.v, b.v)};
}

template <typename R>
WordsIn<R> operator&(WordsIn<R> a, WordsIn<R> b) {
  return {R::bitAnd(a.v, b.v)};
}

template <typename R>
WordsIn<R> magnitude(WordsIn<R> a) {
  return {R::abs32(a.v)};
}

/// The leak of core/FixedPoint.h, a / 16384 - a, rounded down, for any lanes of 32 or 64 bits whose values do not make
/// it wrap.
template <typename Words>
requires requires(Words a) { a.template shiftedRight<14>() - a; }
Words leak(Words a) { return a.template shiftedRight<14>() - a; }

template <typename Lanes>
Lanes leakTwice(Lanes a) {
  return leak(leak(a));
}

template <typename R>
bool isAnyNegative(WordsIn<R> a) {
  return R::signs32(a.v) != 0;
}

template <typename R>
WordsIn<R> smaller(WordsIn<R> a, WordsIn<R> b) {
  return {R::min32(a.v, b.v)};
}

template <typename R>
WordsIn<R> larger(WordsIn<R> a, WordsIn<R> b) {
  return {R::max32(a.v, b.v)};
}

template <int kBits, typename R>
WordsIn<R> product(WordsIn<R> a, WordsIn<R> b) {
  return {R::template mulShiftUnsigned32<kBits>(a.v, b.v)};
}

template <int kBits, cofu::registers::SignedProducts R>
WordsIn<R> signedProduct(WordsIn<R> a, WordsIn<R> b) {
  return {R::template mulShift32<kBits>(a.v, b.v)};
}

template <typename R>
WordsIn<R> timesShort(WordsIn<R> a, std::int16_t factor) {
  return {R::pairSums16(a.v, R::all32(static_cast<std::uint16_t>(factor)))};
}

}  // namespace tesh::bramel::plugin::sivray::effects::lanes
