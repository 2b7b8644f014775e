// Operations on registers of 256 bits, for AVX2. Must be included between the marks of core/VectorCode.h, after
// including Registers128.h before the marks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "registers/Registers128Sse41.h"

namespace tesh::cofu::registers {
namespace {

/// The operations are described in Registers128Sse2.
struct Registers256 {
  using Integers = __m256i;
  using Floats = __m256;
  using Count = __m128i;
  static constexpr unsigned kBytes = 32;

  /// The operations on half a register.
  using Half = Registers128Sse41;

  static Integers load(const void* from) { return _mm256_loadu_si256(static_cast<const Integers*>(from)); }
  static Integers loadAligned(const void* from) { return _mm256_load_si256(static_cast<const Integers*>(from)); }
  static void store(void* to, Integers v) { _mm256_storeu_si256(static_cast<Integers*>(to), v); }
  static void storeAligned(void* to, Integers v) { _mm256_store_si256(static_cast<Integers*>(to), v); }
  static Floats loadFloats(const float* from) { return _mm256_loadu_ps(from); }
  static Floats loadAlignedFloats(const float* from) { return _mm256_load_ps(from); }
  static void storeFloats(float* to, Floats v) { _mm256_storeu_ps(to, v); }
  /// The same 64 bits in all 64-bit lanes.
  static Integers loadAll64(const void* from) { return _mm256_broadcastq_epi64(Half::load64(from)); }

  static Integers zero() { return _mm256_setzero_si256(); }
  static Integers all16(std::int16_t x) { return _mm256_set1_epi16(x); }
  static Integers all32(std::int32_t x) { return _mm256_set1_epi32(x); }
  static Integers all64(std::int64_t x) { return _mm256_set1_epi64x(x); }
  static Floats allFloats(float x) { return _mm256_set1_ps(x); }
  static Integers multiples32(std::int32_t x) { return mulLow32(all32(x), _mm256_setr_epi32(1, 2, 3, 4, 5, 6, 7, 8)); }

  // Halves.
  static Half::Integers lower(Integers v) { return _mm256_castsi256_si128(v); }
  static Half::Integers upper(Integers v) { return _mm256_extracti128_si256(v, 1); }
  static Half::Floats lower(Floats v) { return _mm256_castps256_ps128(v); }
  static Half::Floats upper(Floats v) { return _mm256_extractf128_ps(v, 1); }
  static Integers joined(Half::Integers lower, Half::Integers upper) { return _mm256_set_m128i(upper, lower); }
  static Floats joined(Half::Floats lower, Half::Floats upper) { return _mm256_set_m128(upper, lower); }
  static Floats joinedUppers(Floats a, Floats b) { return __builtin_shufflevector(a, b, 4, 5, 6, 7, 12, 13, 14, 15); }
  /// Lanes 0, 1, 0, 1 in the lower half, and 2, 3, 2, 3 in the upper half.
  static Floats halvesTwice(Half::Floats v) { return __builtin_shufflevector(v, v, 0, 1, 0, 1, 2, 3, 2, 3); }
  /// Eight 16-bit lanes, sign-extended to 32 bits.
  static Integers widened16(Half::Integers v) { return _mm256_cvtepi16_epi32(v); }
  static Integers loadWidened16(const void* from) { return widened16(Half::load(from)); }
  template <typename Make>
  static Integers mapped32(Integers v, Make make) {
    return joined(Half::mapped32(lower(v), make), Half::mapped32(upper(v), make));
  }
  static void storeNarrowed32(void* to, Integers v) { Half::store(to, narrowed32(v)); }
  static void pairsAt(const float* from, Integers indices, Floats& first, Floats& second) {
    const auto at = reinterpret_cast<Lanes32>(indices);
    const auto pair = [from](std::int32_t index) { return Half::pairAt(from, index); };
    // In the order that the shuffles below need.
    const Integers even = _mm256_set_epi64x(pair(at[5]), pair(at[4]), pair(at[1]), pair(at[0]));
    const Integers odd = _mm256_set_epi64x(pair(at[7]), pair(at[6]), pair(at[3]), pair(at[2]));
    first = evens32(bitsAsFloats(even), bitsAsFloats(odd));
    second = odds32(bitsAsFloats(even), bitsAsFloats(odd));
  }
  /// All 32-bit lanes in order, saturated to 16 bits.
  static Half::Integers narrowed32(Integers v) { return Half::packed32(lower(v), upper(v)); }

  static Integers add16(Integers a, Integers b) { return _mm256_add_epi16(a, b); }
  static Integers sub16(Integers a, Integers b) { return _mm256_sub_epi16(a, b); }
  static Integers addLimited16(Integers a, Integers b) { return _mm256_adds_epi16(a, b); }
  static Integers subLimited16(Integers a, Integers b) { return _mm256_subs_epi16(a, b); }
  static Integers subLimitedUnsigned16(Integers a, Integers b) { return _mm256_subs_epu16(a, b); }
  static Integers max16(Integers a, Integers b) { return _mm256_max_epi16(a, b); }
  static Integers mulHigh16(Integers a, Integers b) { return _mm256_mulhi_epi16(a, b); }
  static Integers mulHighUnsigned16(Integers a, Integers b) { return _mm256_mulhi_epu16(a, b); }
  static Integers mulLow16(Integers a, Integers b) { return _mm256_mullo_epi16(a, b); }
  static Integers equal16(Integers a, Integers b) { return _mm256_cmpeq_epi16(a, b); }
  static Integers abs16(Integers v) { return _mm256_abs_epi16(v); }
  static Integers withSignOf16(Integers v, Integers sign) { return _mm256_sign_epi16(v, sign); }
  static Integers nearerZero16(Integers v, Integers mask) { return add16(v, withSignOf16(mask, v)); }
  template <int kBits>
  static Integers shiftRight16(Integers v) {
    return _mm256_srai_epi16(v, kBits);
  }
  template <int kBits>
  static Integers shiftRightUnsigned16(Integers v) {
    return _mm256_srli_epi16(v, kBits);
  }
  static Integers pairSums16(Integers a, Integers b) { return _mm256_madd_epi16(a, b); }

  static Integers add32(Integers a, Integers b) { return _mm256_add_epi32(a, b); }
  static Integers sub32(Integers a, Integers b) { return _mm256_sub_epi32(a, b); }
  static Integers equal32(Integers a, Integers b) { return _mm256_cmpeq_epi32(a, b); }
  static Integers greater32(Integers a, Integers b) { return _mm256_cmpgt_epi32(a, b); }
  static Integers min32(Integers a, Integers b) { return _mm256_min_epi32(a, b); }
  static Integers max32(Integers a, Integers b) { return _mm256_max_epi32(a, b); }
  static Integers limited32(Integers v, Integers bottom, Integers top) { return max32(min32(v, top), bottom); }
  static Integers saturated32(Integers v) { return limited32(v, all32(-32767), all32(32767)); }
  static Integers abs32(Integers v) { return _mm256_abs_epi32(v); }
  template <int kBits>
  static Integers shiftRight32(Integers v) {
    return _mm256_srai_epi32(v, kBits);
  }
  template <int kBits>
  static Integers shiftRightUnsigned32(Integers v) {
    return _mm256_srli_epi32(v, kBits);
  }
  template <int kBits>
  static Integers shiftLeft32(Integers v) {
    return _mm256_slli_epi32(v, kBits);
  }
  static Count count(int bits) { return Half::count(bits); }
  static Integers shiftRight32(Integers v, Count bits) { return _mm256_sra_epi32(v, bits); }
  static Integers mulLow32(Integers a, Integers b) { return _mm256_mullo_epi32(a, b); }
  template <int kBits>
  static Integers mulShiftUnsigned32(Integers a, Integers b) {
    const Integers even = shiftRightUnsigned64<kBits>(mulEvenUnsigned32(a, b));
    const Integers odd = mulEvenUnsigned32(shiftRightUnsigned64<32>(a), shiftRightUnsigned64<32>(b));
    return bitOr(even, shiftLeft64<32>(shiftRightUnsigned64<kBits>(odd)));
  }
  template <int kBits>
  static Integers mulShift32(Integers a, Integers b) {
    const Integers even = shiftRightUnsigned64<kBits>(mulEven32(a, b));
    const Integers odd = mulEven32(shiftRightUnsigned64<32>(a), shiftRightUnsigned64<32>(b));
    return eitherOf32<0b10101010>(even, shiftLeft64<32 - kBits>(odd));
  }

  static Integers add64(Integers a, Integers b) { return _mm256_add_epi64(a, b); }
  static Integers sub64(Integers a, Integers b) { return _mm256_sub_epi64(a, b); }
  template <int kBits>
  static Integers shiftRightUnsigned64(Integers v) {
    return _mm256_srli_epi64(v, kBits);
  }
  template <int kBits>
  static Integers shiftLeft64(Integers v) {
    return _mm256_slli_epi64(v, kBits);
  }
  static Integers mulEvenUnsigned32(Integers a, Integers b) { return _mm256_mul_epu32(a, b); }
  static Integers mulEven32(Integers a, Integers b) { return _mm256_mul_epi32(a, b); }

  static Integers bitAnd(Integers a, Integers b) { return _mm256_and_si256(a, b); }
  static Integers bitOr(Integers a, Integers b) { return _mm256_or_si256(a, b); }
  static Integers bitXor(Integers a, Integers b) { return _mm256_xor_si256(a, b); }
  static Integers andNot(Integers mask, Integers v) { return _mm256_andnot_si256(mask, v); }

  static int signs32(Integers v) { return _mm256_movemask_ps(_mm256_castsi256_ps(v)); }
  static bool isZero(Integers v) { return _mm256_testz_si256(v, v) != 0; }
  static bool overlap(Integers a, Integers b) { return _mm256_testz_si256(a, b) == 0; }

  static Integers zipLow16(Integers a, Integers b) { return _mm256_unpacklo_epi16(a, b); }
  static Integers zipHigh16(Integers a, Integers b) { return _mm256_unpackhi_epi16(a, b); }
  static Integers zipLow32(Integers a, Integers b) { return _mm256_unpacklo_epi32(a, b); }
  static Integers zipHigh32(Integers a, Integers b) { return _mm256_unpackhi_epi32(a, b); }
  static Integers zipLow64(Integers a, Integers b) { return _mm256_unpacklo_epi64(a, b); }
  static Integers zipHigh64(Integers a, Integers b) { return _mm256_unpackhi_epi64(a, b); }
  static Integers evens32(Integers a, Integers b) { return bitsOfFloats(evens32(bitsAsFloats(a), bitsAsFloats(b))); }
  static Integers odds32(Integers a, Integers b) { return bitsOfFloats(odds32(bitsAsFloats(a), bitsAsFloats(b))); }
  static Integers neighbourSums32(Integers a, Integers b) { return _mm256_hadd_epi32(a, b); }
  static Integers packed32(Integers a, Integers b) { return _mm256_packs_epi32(a, b); }
  static Integers inOrder(Integers packed) { return _mm256_permute4x64_epi64(packed, _MM_SHUFFLE(3, 1, 2, 0)); }
  static Integers uppers16(Integers a, Integers b) {
    return _mm256_blend_epi16(shiftRightUnsigned32<16>(a), b, 0b10101010);
  }
  /// The lanes of `b` whose bit of the mask is set, else those of `a`.
  template <int kMask>
  static Integers eitherOf32(Integers a, Integers b) {
    return _mm256_blend_epi32(a, b, kMask);
  }
  static Integers zippedHalves16(Integers v) {
    const __m128i order = _mm_set_epi8(15, 14, 7, 6, 13, 12, 5, 4, 11, 10, 3, 2, 9, 8, 1, 0);
    return _mm256_shuffle_epi8(v, _mm256_broadcastsi128_si256(order));
  }
  static Integers swappedMiddles16(Integers v) {
    const __m128i order = _mm_set_epi8(15, 14, 11, 10, 13, 12, 9, 8, 7, 6, 3, 2, 5, 4, 1, 0);
    return _mm256_shuffle_epi8(v, _mm256_broadcastsi128_si256(order));
  }
  static Integers after16(Integers v, std::int16_t first) {
    const Integers lowerAbove = _mm256_permute2x128_si256(v, v, 0x08);
    return _mm256_insert_epi16(_mm256_alignr_epi8(v, lowerAbove, 14), first, 0);
  }
  static std::int16_t last16(Integers v) { return static_cast<std::int16_t>(_mm256_extract_epi16(v, 15)); }

  static Floats minFloats(Floats a, Floats b) { return _mm256_min_ps(a, b); }
  static Floats maxFloats(Floats a, Floats b) { return _mm256_max_ps(a, b); }
  static Integers greaterFloats(Floats a, Floats b) { return bitsOfFloats(_mm256_cmp_ps(a, b, _CMP_GT_OS)); }
  static Floats floatsOf(Integers v) { return _mm256_cvtepi32_ps(v); }
  static Integers truncated(Floats v) { return _mm256_cvttps_epi32(v); }
  static Floats bitsAsFloats(Integers v) { return _mm256_castsi256_ps(v); }
  static Integers bitsOfFloats(Floats v) { return _mm256_castps_si256(v); }
  static Floats lowHalves(Floats a, Floats b) {
    return _mm256_castpd_ps(_mm256_unpacklo_pd(_mm256_castps_pd(a), _mm256_castps_pd(b)));
  }
  static Floats highHalves(Floats a, Floats b) {
    return _mm256_castpd_ps(_mm256_unpackhi_pd(_mm256_castps_pd(a), _mm256_castps_pd(b)));
  }
  static Floats zipLow32(Floats a, Floats b) { return _mm256_unpacklo_ps(a, b); }
  static Floats zipHigh32(Floats a, Floats b) { return _mm256_unpackhi_ps(a, b); }
  static Floats evens32(Floats a, Floats b) { return _mm256_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)); }
  static Floats odds32(Floats a, Floats b) { return _mm256_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1)); }
  static Floats reversed(Floats v) { return __builtin_shufflevector(v, v, 7, 6, 5, 4, 3, 2, 1, 0); }

 private:
  using Lanes32 = std::int32_t __attribute__((vector_size(kBytes)));
};

static_assert(IntegerRegisters<Registers256> && FloatRegisters<Registers256> && SignedProducts<Registers256>);

}  // namespace
}  // namespace tesh::cofu::registers
