// Concepts that every struct of registers must satisfy, so that an incomplete one does not compile. Registers128Sse2.h
// describes the operations.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::cofu::registers {

/// Operations on one, two and three registers of integers.
template <typename R>
using UnaryOperation = typename R::Integers (*)(typename R::Integers);
template <typename R>
using BinaryOperation = typename R::Integers (*)(typename R::Integers, typename R::Integers);
template <typename R>
using TernaryOperation = typename R::Integers (*)(typename R::Integers, typename R::Integers, typename R::Integers);

// clang-format off
template <typename R>
concept IntegerRegisters = requires(typename R::Integers v, const void* from, void* to, int number,
                                    UnaryOperation<R> one, BinaryOperation<R> two, TernaryOperation<R> three) {
  requires sizeof(typename R::Integers) == R::kBytes;
  v = R::load(from);  v = R::loadAligned(from);  R::store(to, v);  R::storeAligned(to, v);
  v = R::loadWidened16(from);  v = R::mapped32(v, [](std::int32_t lane) { return lane; });
  v = R::zero();  v = R::all16(std::int16_t{1});  v = R::all32(1);  v = R::all64(1);  v = R::multiples32(1);

  two = R::add16;  two = R::sub16;  two = R::addLimited16;  two = R::subLimited16;  two = R::subLimitedUnsigned16;
  two = R::max16;  two = R::mulHigh16;  two = R::mulHighUnsigned16;  two = R::mulLow16;  two = R::pairSums16;
  two = R::equal16;
  one = R::abs16;  two = R::withSignOf16;  two = R::nearerZero16;
  one = R::template shiftRight16<1>;  one = R::template shiftRightUnsigned16<1>;

  two = R::add32;  two = R::sub32;  two = R::equal32;  two = R::greater32;  two = R::min32;  two = R::max32;
  three = R::limited32;  one = R::saturated32;  one = R::abs32;  two = R::mulLow32;  two = R::template mulShiftUnsigned32<1>;
  one = R::template shiftRight32<1>;  one = R::template shiftRightUnsigned32<1>;  one = R::template shiftLeft32<1>;
  v = R::shiftRight32(v, R::count(1));

  two = R::add64;  two = R::sub64;  two = R::mulEvenUnsigned32;
  one = R::template shiftRightUnsigned64<1>;  one = R::template shiftLeft64<1>;

  two = R::bitAnd;  two = R::bitOr;  two = R::bitXor;  two = R::andNot;
  number = R::signs32(v);  number = R::isZero(v);  number = R::overlap(v, v);

  two = R::zipLow16;  two = R::zipHigh16;  two = R::zipLow32;  two = R::zipHigh32;  two = R::zipLow64;  two = R::zipHigh64;
  two = R::evens32;  two = R::odds32;  two = R::neighbourSums32;  two = R::packed32;  one = R::inOrder;
  two = R::uppers16;  one = R::zippedHalves16;  one = R::swappedMiddles16;
  v = R::after16(v, std::int16_t{1});  number = R::last16(v);
};

/// Registers that consist of two others.
template <typename R>
concept HasHalves = requires(typename R::Integers v, typename R::Half::Integers half) {
  half = R::lower(v);  half = R::upper(v);  v = R::joined(half, half);
};

template <typename R>
concept FloatRegisters = requires(typename R::Floats x, typename R::Integers v, const float* from, float* to) {
  requires sizeof(typename R::Floats) == R::kBytes;
  x = R::loadFloats(from);  x = R::loadAlignedFloats(from);  R::storeFloats(to, x);  x = R::allFloats(1.0F);
  x = x * x + x - x;  x = R::minFloats(x, x);  x = R::maxFloats(x, x);
  x = R::floatsOf(v);  v = R::truncated(x);  x = R::bitsAsFloats(v);  v = R::bitsOfFloats(x);
  v = R::greaterFloats(x, x);  R::storeNarrowed32(to, v);  R::pairsAt(from, v, x, x);
  x = R::zipLow32(x, x);  x = R::zipHigh32(x, x);  x = R::evens32(x, x);  x = R::odds32(x, x);  x = R::reversed(x);
  x = R::lowHalves(x, x);  x = R::highHalves(x, x);
};

/// Signed products of 32-bit lanes, and a selection of lanes, for processors with a single instruction for them.
template <typename R>
concept SignedProducts = requires(BinaryOperation<R> two) {
  two = R::mulEven32;  two = R::template mulShift32<1>;  two = R::template eitherOf32<1>;
};
// clang-format on

}  // namespace tesh::cofu::registers
