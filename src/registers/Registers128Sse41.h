// The registers of 128 bits with SSE4.1 instructions. Must be included between the marks of core/VectorCode.h for
// SSE4.1 or more, after including Registers128.h before the marks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "registers/Registers128.h"

namespace tesh::cofu::registers {
namespace {

/// The operations are described in Registers128Sse2.
struct Registers128Sse41 : Registers128 {
  static Integers abs16(Integers v) { return _mm_abs_epi16(v); }
  static Integers withSignOf16(Integers v, Integers sign) { return _mm_sign_epi16(v, sign); }
  static Integers nearerZero16(Integers v, Integers mask) { return add16(v, withSignOf16(mask, v)); }

  static Integers min32(Integers a, Integers b) { return _mm_min_epi32(a, b); }
  static Integers max32(Integers a, Integers b) { return _mm_max_epi32(a, b); }
  static Integers limited32(Integers v, Integers bottom, Integers top) { return max32(min32(v, top), bottom); }
  static Integers saturated32(Integers v) { return limited32(v, all32(-32767), all32(32767)); }
  static Integers abs32(Integers v) { return _mm_abs_epi32(v); }
  static Integers mulLow32(Integers a, Integers b) { return _mm_mullo_epi32(a, b); }
  static Integers mulEven32(Integers a, Integers b) { return _mm_mul_epi32(a, b); }
  template <int kBits>
  static Integers mulShift32(Integers a, Integers b) {
    const Integers even = shiftRightUnsigned64<kBits>(mulEven32(a, b));
    const Integers odd = mulEven32(shiftRightUnsigned64<32>(a), shiftRightUnsigned64<32>(b));
    return eitherOf32<0b1010>(even, shiftLeft64<32 - kBits>(odd));
  }
  static Integers widened16(Integers v) { return _mm_cvtepi16_epi32(v); }
  static Integers loadWidened16(const void* from) { return widened16(load64(from)); }

  static bool isZero(Integers v) { return _mm_testz_si128(v, v) != 0; }
  static bool overlap(Integers a, Integers b) { return _mm_testz_si128(a, b) == 0; }

  template <int kMask>
  static Integers eitherOf32(Integers a, Integers b) {
    constexpr auto from = [](int lane) { return (kMask >> lane & 1) * 4 + lane; };
    using Lanes = std::int32_t __attribute__((vector_size(kBytes)));
    return reinterpret_cast<Integers>(__builtin_shufflevector(reinterpret_cast<Lanes>(a), reinterpret_cast<Lanes>(b),
                                                              from(0), from(1), from(2), from(3)));
  }
  template <typename Make>
  static Integers mapped32(Integers v, Make make) {
    return four32(make(first32(v)), make(_mm_extract_epi32(v, 1)), make(_mm_extract_epi32(v, 2)),
                  make(_mm_extract_epi32(v, 3)));
  }
  static Integers neighbourSums32(Integers a, Integers b) { return _mm_hadd_epi32(a, b); }
  static Integers uppers16(Integers a, Integers b) {
    return _mm_blend_epi16(shiftRightUnsigned32<16>(a), b, 0b10101010);
  }
  static Integers zippedHalves16(Integers v) {
    return _mm_shuffle_epi8(v, _mm_set_epi8(15, 14, 7, 6, 13, 12, 5, 4, 11, 10, 3, 2, 9, 8, 1, 0));
  }
  static Integers swappedMiddles16(Integers v) {
    return _mm_shuffle_epi8(v, _mm_set_epi8(15, 14, 11, 10, 13, 12, 9, 8, 7, 6, 3, 2, 5, 4, 1, 0));
  }
  static float secondFloat(Floats v) { return firstFloat(_mm_movehdup_ps(v)); }
  static std::int32_t second32(Integers v) { return _mm_extract_epi32(v, 1); }
  static std::int32_t third32(Integers v) { return _mm_extract_epi32(v, 2); }
};

static_assert(IntegerRegisters<Registers128Sse41> && FloatRegisters<Registers128Sse41>);
static_assert(SignedProducts<Registers128Sse41>);

}  // namespace
}  // namespace tesh::cofu::registers
