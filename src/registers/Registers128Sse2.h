// Operations on registers of 128 bits, in the instructions that every 64-bit x86 processor has. For other processors
// they are translated. Registers128Neon.h replaces some by shorter forms for ARM, Registers128Sse41.h by shorter forms
// with SSE4.1. Registers256.h has the same operations with the same results for twice as many lanes. Only this room
// uses processor instructions by name.
//
// Numbers in names are the bits of a lane. In registers longer than 128 bits, operations that rearrange lanes work
// within each group of 128 bits, unless stated otherwise.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

#include "registers/Intrinsics.h"
#include "registers/RegisterConcepts.h"

namespace tesh::cofu::registers {

struct Registers128Sse2 {
  using Integers = __m128i;
  using Floats = __m128;  ///< Single precision. The compiler provides +, - and *.
  using Count = __m128i;  ///< A shift count for all lanes.
  static constexpr unsigned kBytes = 16;

  // Memory. Only the aligned operations need an address that is a multiple of `kBytes`.
  static Integers load(const void* from) { return _mm_loadu_si128(static_cast<const Integers*>(from)); }
  static Integers loadAligned(const void* from) { return _mm_load_si128(static_cast<const Integers*>(from)); }
  static void store(void* to, Integers v) { _mm_storeu_si128(static_cast<Integers*>(to), v); }
  static void storeAligned(void* to, Integers v) { _mm_store_si128(static_cast<Integers*>(to), v); }
  static Floats loadFloats(const float* from) { return _mm_loadu_ps(from); }
  static Floats loadAlignedFloats(const float* from) { return _mm_load_ps(from); }
  static void storeFloats(float* to, Floats v) { _mm_storeu_ps(to, v); }
  /// 64 bits in the lowest lane of each group; the other lanes are 0.
  static Integers load64(const void* from) { return _mm_loadl_epi64(static_cast<const Integers*>(from)); }
  /// The lowest 64 bits.
  static void store64(void* to, Integers v) { _mm_storel_epi64(static_cast<Integers*>(to), v); }
  /// As many 16-bit samples as there are 32-bit lanes, sign-extended.
  static Integers loadWidened16(const void* from) {
    const Integers words = load64(from);
    return shiftRight32<16>(zipLow16(words, words));
  }
  /// Narrows 32-bit lanes to 16 bits with saturation.
  static void storeNarrowed32(void* to, Integers v) { store64(to, packed32(v, v)); }
  /// The entries at the indices, which must not be negative, and the entries after them.
  static void pairsAt(const float* from, Integers indices, Floats& first, Floats& second) {
    const auto at = reinterpret_cast<Lanes32>(indices);
    const Integers early = _mm_set_epi64x(pairAt(from, at[1]), pairAt(from, at[0]));
    const Integers late = _mm_set_epi64x(pairAt(from, at[3]), pairAt(from, at[2]));
    first = evens32(bitsAsFloats(early), bitsAsFloats(late));
    second = odds32(bitsAsFloats(early), bitsAsFloats(late));
  }

  // One value in all lanes, and four values.
  static Integers zero() { return _mm_setzero_si128(); }
  static Integers all16(std::int16_t x) { return _mm_set1_epi16(x); }
  static Integers all32(std::int32_t x) { return _mm_set1_epi32(x); }
  static Integers all64(std::int64_t x) { return _mm_set1_epi64x(x); }
  static Floats allFloats(float x) { return _mm_set1_ps(x); }
  static Floats fourFloats(float a, float b, float c, float d) { return _mm_setr_ps(a, b, c, d); }
  static Integers four32(std::int32_t a, std::int32_t b, std::int32_t c, std::int32_t d) {
    return _mm_setr_epi32(a, b, c, d);
  }
  /// x, 2 * x, 3 * x and so on, with wrapping.
  static Integers multiples32(std::int32_t x) {
    const auto times = [x](std::uint32_t n) { return static_cast<std::int32_t>(n * static_cast<std::uint32_t>(x)); };
    return four32(x, times(2), times(3), times(4));
  }

  // Lanes of 16 bits. Results wrap; operations with "Limited" saturate.
  static Integers add16(Integers a, Integers b) { return _mm_add_epi16(a, b); }
  static Integers sub16(Integers a, Integers b) { return _mm_sub_epi16(a, b); }
  static Integers addLimited16(Integers a, Integers b) { return _mm_adds_epi16(a, b); }
  static Integers subLimited16(Integers a, Integers b) { return _mm_subs_epi16(a, b); }
  /// a - b, unsigned, at least 0.
  static Integers subLimitedUnsigned16(Integers a, Integers b) { return _mm_subs_epu16(a, b); }
  static Integers max16(Integers a, Integers b) { return _mm_max_epi16(a, b); }
  /// The upper 16 bits of the products, signed or unsigned, and the lower 16 bits.
  static Integers mulHigh16(Integers a, Integers b) { return _mm_mulhi_epi16(a, b); }
  static Integers mulHighUnsigned16(Integers a, Integers b) { return _mm_mulhi_epu16(a, b); }
  static Integers mulLow16(Integers a, Integers b) { return _mm_mullo_epi16(a, b); }
  /// -1 where they are equal, else 0.
  static Integers equal16(Integers a, Integers b) { return _mm_cmpeq_epi16(a, b); }
  /// v
  /// , except that -32768 stays -32768.
  static Integers abs16(Integers v) { return max16(v, sub16(zero(), v)); }
  /// `v` or -v by the sign of `sign`. Where `sign` is 0, `v` must be 0 too.
  static Integers withSignOf16(Integers v, Integers sign) {
    const Integers negative = shiftRight16<15>(sign);
    return sub16(bitXor(v, negative), negative);
  }
  /// `v`, moved one step towards 0 in the lanes of the mask.
  static Integers nearerZero16(Integers v, Integers mask) {
    const Integers sign = sub16(_mm_cmpgt_epi16(zero(), v), _mm_cmpgt_epi16(v, zero()));
    return sub16(v, bitAnd(mask, sign));
  }
  template <int kBits>
  static Integers shiftRight16(Integers v) {
    return _mm_srai_epi16(v, kBits);
  }
  template <int kBits>
  static Integers shiftRightUnsigned16(Integers v) {
    return _mm_srli_epi16(v, kBits);
  }
  /// Per 32 bits: the product of the lower lanes plus that of the upper ones.
  static Integers pairSums16(Integers a, Integers b) { return _mm_madd_epi16(a, b); }

  // Lanes of 32 bits, which wrap.
  static Integers add32(Integers a, Integers b) { return _mm_add_epi32(a, b); }
  static Integers sub32(Integers a, Integers b) { return _mm_sub_epi32(a, b); }
  static Integers equal32(Integers a, Integers b) { return _mm_cmpeq_epi32(a, b); }
  static Integers greater32(Integers a, Integers b) { return _mm_cmpgt_epi32(a, b); }
  static Integers min32(Integers a, Integers b) { return either(greater32(a, b), b, a); }
  static Integers max32(Integers a, Integers b) { return either(greater32(a, b), a, b); }
  /// Limits to `bottom` .. `top`. Uses masks: four dependent steps.
  static Integers limited32(Integers v, Integers bottom, Integers top) {
    const Integers above = greater32(v, top);
    const Integers below = greater32(bottom, v);
    const Integers limits = bitOr(bitAnd(above, top), bitAnd(below, bottom));
    return bitOr(andNot(bitOr(above, below), v), limits);
  }
  /// Limits to -32767 .. 32767, the range of samples.
  static Integers saturated32(Integers v) {
    const Integers words = max16(packed32(v, v), all16(-32767));
    return shiftRight32<16>(zipLow16(words, words));
  }
  /// v
  /// , except that -2^31 stays -2^31.
  static Integers abs32(Integers v) {
    const Integers sign = shiftRight32<31>(v);
    return sub32(bitXor(v, sign), sign);
  }
  template <int kBits>
  static Integers shiftRight32(Integers v) {
    return _mm_srai_epi32(v, kBits);
  }
  template <int kBits>
  static Integers shiftRightUnsigned32(Integers v) {
    return _mm_srli_epi32(v, kBits);
  }
  template <int kBits>
  static Integers shiftLeft32(Integers v) {
    return _mm_slli_epi32(v, kBits);
  }
  static Count count(int bits) { return _mm_cvtsi32_si128(bits); }
  static Integers shiftRight32(Integers v, Count bits) { return _mm_sra_epi32(v, bits); }
  /// The lower 32 bits of the products.
  static Integers mulLow32(Integers a, Integers b) {
    const Integers even = mulEvenUnsigned32(a, b);
    const Integers odd = mulEvenUnsigned32(shiftRightUnsigned64<32>(a), shiftRightUnsigned64<32>(b));
    return zipLow32(_mm_shuffle_epi32(even, _MM_SHUFFLE(0, 0, 2, 0)), _mm_shuffle_epi32(odd, _MM_SHUFFLE(0, 0, 2, 0)));
  }
  /// (a * b) >> kBits with unsigned products of 64 bits. The result must fit 32 bits.
  template <int kBits>
  static Integers mulShiftUnsigned32(Integers a, Integers b) {
    const Integers even = shiftRightUnsigned64<kBits>(mulEvenUnsigned32(a, b));
    const Integers odd = mulEvenUnsigned32(shiftRightUnsigned64<32>(a), shiftRightUnsigned64<32>(b));
    return bitOr(even, shiftLeft64<32>(shiftRightUnsigned64<kBits>(odd)));
  }

  // Lanes of 64 bits.
  static Integers add64(Integers a, Integers b) { return _mm_add_epi64(a, b); }
  static Integers sub64(Integers a, Integers b) { return _mm_sub_epi64(a, b); }
  template <int kBits>
  static Integers shiftRightUnsigned64(Integers v) {
    return _mm_srli_epi64(v, kBits);
  }
  template <int kBits>
  static Integers shiftLeft64(Integers v) {
    return _mm_slli_epi64(v, kBits);
  }
  /// The products of the lower 32 bits of each lane, unsigned.
  static Integers mulEvenUnsigned32(Integers a, Integers b) { return _mm_mul_epu32(a, b); }

  // Bits.
  static Integers bitAnd(Integers a, Integers b) { return _mm_and_si128(a, b); }
  static Integers bitOr(Integers a, Integers b) { return _mm_or_si128(a, b); }
  static Integers bitXor(Integers a, Integers b) { return _mm_xor_si128(a, b); }
  /// `v` where the mask is 0.
  static Integers andNot(Integers mask, Integers v) { return _mm_andnot_si128(mask, v); }

  // Tests of all lanes.
  /// The signs of 32-bit lanes, the first in the lowest bit.
  static int signs32(Integers v) { return _mm_movemask_ps(_mm_castsi128_ps(v)); }
  static bool isZero(Integers v) { return _mm_movemask_epi8(_mm_cmpeq_epi8(v, zero())) == 0xFFFF; }
  /// Whether two masks have a lane in common.
  static bool overlap(Integers a, Integers b) { return _mm_movemask_epi8(bitAnd(a, b)) != 0; }

  // Rearranging lanes.
  /// Interleaves the lower or upper halves of `a` and `b`.
  static Integers zipLow16(Integers a, Integers b) { return _mm_unpacklo_epi16(a, b); }
  static Integers zipHigh16(Integers a, Integers b) { return _mm_unpackhi_epi16(a, b); }
  static Integers zipLow32(Integers a, Integers b) { return _mm_unpacklo_epi32(a, b); }
  static Integers zipHigh32(Integers a, Integers b) { return _mm_unpackhi_epi32(a, b); }
  static Integers zipLow64(Integers a, Integers b) { return _mm_unpacklo_epi64(a, b); }
  static Integers zipHigh64(Integers a, Integers b) { return _mm_unpackhi_epi64(a, b); }
  /// The even-numbered 32-bit lanes of `a`, then of `b`; likewise the odd-numbered ones.
  static Integers evens32(Integers a, Integers b) { return bitsOfFloats(evens32(bitsAsFloats(a), bitsAsFloats(b))); }
  static Integers odds32(Integers a, Integers b) { return bitsOfFloats(odds32(bitsAsFloats(a), bitsAsFloats(b))); }
  /// The sums of neighbouring lanes of `a`, then of `b`.
  static Integers neighbourSums32(Integers a, Integers b) { return add32(evens32(a, b), odds32(a, b)); }
  /// The 32-bit lanes of `a`, then of `b`, saturated to 16 bits.
  static Integers packed32(Integers a, Integers b) { return _mm_packs_epi32(a, b); }
  /// Puts all of `a` before all of `b` in a result of `packed32`; in registers of 128 bits they already are.
  static Integers inOrder(Integers packed) { return packed; }
  /// Per 32 bits: the upper 16 bits of `a` in the lower half, those of `b` in the upper half.
  static Integers uppers16(Integers a, Integers b) {
    return bitOr(shiftRightUnsigned32<16>(a), andNot(all32(0xFFFF), b));
  }
  /// One 32-bit lane, copied to all lanes.
  template <int kLane>
  static Integers inAllLanes32(Integers v) {
    return _mm_shuffle_epi32(v, _MM_SHUFFLE(kLane, kLane, kLane, kLane));
  }
  /// Interleaves the lower and upper halves.
  static Integers zippedHalves16(Integers v) { return zipLow16(v, zipHigh64(v, v)); }
  /// Swaps the second and third 16-bit lane of each 64 bits.
  static Integers swappedMiddles16(Integers v) {
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(v, _MM_SHUFFLE(3, 1, 2, 0)), _MM_SHUFFLE(3, 1, 2, 0));
  }
  /// As above, in the lower half only.
  static Integers swappedLowMiddles16(Integers v) { return _mm_shufflelo_epi16(v, _MM_SHUFFLE(3, 1, 2, 0)); }
  /// Applies `make` to each lane, in any order.
  template <typename Make>
  static Integers mapped32(Integers v, Make make) {
    alignas(kBytes) std::int32_t lanes[4];
    storeAligned(lanes, v);
    return four32(make(lanes[0]), make(lanes[1]), make(lanes[2]), make(lanes[3]));
  }
  /// `first`, then all lanes of the whole register except the last.
  static Integers after16(Integers v, std::int16_t first) { return _mm_insert_epi16(_mm_slli_si128(v, 2), first, 0); }
  static std::int16_t last16(Integers v) { return static_cast<std::int16_t>(_mm_extract_epi16(v, 7)); }

  // Lanes of the lowest 128 bits.
  static std::int32_t first32(Integers v) { return _mm_cvtsi128_si32(v); }
  static std::int32_t second32(Integers v) { return first32(shiftRightUnsigned64<32>(v)); }
  static std::int32_t third32(Integers v) { return first32(zipHigh64(v, v)); }
  template <int kLane>
  static std::int16_t lane16(Integers v) {
    return static_cast<std::int16_t>(_mm_extract_epi16(v, kLane));
  }
  static float firstFloat(Floats v) { return _mm_cvtss_f32(v); }
  static float secondFloat(Floats v) { return firstFloat(_mm_shuffle_ps(v, v, _MM_SHUFFLE(1, 1, 1, 1))); }
  /// The sum of four lanes.
  static std::int32_t sum32(Integers v) {
    const Integers pairs = add32(v, _mm_shuffle_epi32(v, _MM_SHUFFLE(1, 0, 3, 2)));
    return first32(add32(pairs, _mm_shuffle_epi32(pairs, _MM_SHUFFLE(2, 3, 0, 1))));
  }

  // Lanes of single precision.
  /// `a` if it is smaller (greater), else `b`; also `b` if either is NaN.
  static Floats minFloats(Floats a, Floats b) { return _mm_min_ps(a, b); }
  static Floats maxFloats(Floats a, Floats b) { return _mm_max_ps(a, b); }
  /// -1 where a is greater, else 0.
  static Integers greaterFloats(Floats a, Floats b) { return bitsOfFloats(_mm_cmpgt_ps(a, b)); }
  static Floats floatsOf(Integers v) { return _mm_cvtepi32_ps(v); }
  /// Truncates. Values that do not fit give -2^31.
  static Integers truncated(Floats v) { return _mm_cvttps_epi32(v); }
  static Floats bitsAsFloats(Integers v) { return _mm_castsi128_ps(v); }
  static Integers bitsOfFloats(Floats v) { return _mm_castps_si128(v); }
  /// The lower (upper) half of `a`, then that of `b`.
  static Floats lowHalves(Floats a, Floats b) { return _mm_movelh_ps(a, b); }
  static Floats highHalves(Floats a, Floats b) { return _mm_movehl_ps(b, a); }
  static Floats zipLow32(Floats a, Floats b) { return _mm_unpacklo_ps(a, b); }
  static Floats zipHigh32(Floats a, Floats b) { return _mm_unpackhi_ps(a, b); }
  static Floats evens32(Floats a, Floats b) { return _mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)); }
  static Floats odds32(Floats a, Floats b) { return _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1)); }
  /// Reverses the lanes of the whole register.
  static Floats reversed(Floats v) { return _mm_shuffle_ps(v, v, _MM_SHUFFLE(0, 1, 2, 3)); }
  /// Two neighbouring entries, as the bits of both.
  static std::int64_t pairAt(const float* from, std::int32_t index) {
    std::int64_t pair = 0;
    std::memcpy(&pair, from + static_cast<std::uint32_t>(index), sizeof(pair));
    return pair;
  }

 private:
  /// `a` where the mask is set, else `b`.
  static Integers either(Integers mask, Integers a, Integers b) { return bitOr(bitAnd(mask, a), andNot(mask, b)); }

  using Lanes32 = std::int32_t __attribute__((vector_size(kBytes)));
};

static_assert(IntegerRegisters<Registers128Sse2> && FloatRegisters<Registers128Sse2>);

}  // namespace tesh::cofu::registers
