// Left and right side by side: the 32-bit arithmetic of core/FixedPoint.h on both channels at once, for laws whose
// channels do the same with the same knobs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/FixedPoint.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// In a namespace of their own, so that the operations are found by their arguments and hide no scalar of the same name.
namespace tesh::bramel::plugin::sivray::effects::lanes {

/// The plain form, for any machine.
struct PlainLanes {
  std::int32_t l = 0;
  std::int32_t r = 0;

  static PlainLanes of(std::int32_t left, std::int32_t right) { return {left, right}; }
  static PlainLanes both(std::int32_t value) { return {value, value}; }
  std::int32_t left() const { return l; }
  std::int32_t right() const { return r; }

  friend PlainLanes operator+(PlainLanes a, PlainLanes b) {
    return {cofu::core::wrapAdd(a.l, b.l), cofu::core::wrapAdd(a.r, b.r)};
  }
  friend PlainLanes operator-(PlainLanes a, PlainLanes b) {
    return {cofu::core::wrapSub(a.l, b.l), cofu::core::wrapSub(a.r, b.r)};
  }
  /// The low 32 bits of the products.
  friend PlainLanes operator*(PlainLanes a, PlainLanes b) {
    return {cofu::core::wrapMul(a.l, b.l), cofu::core::wrapMul(a.r, b.r)};
  }
  friend PlainLanes operator^(PlainLanes a, PlainLanes b) { return {a.l ^ b.l, a.r ^ b.r}; }

  template <int Bits>
  PlainLanes shiftedRight() const {
    return {l >> Bits, r >> Bits};
  }
  /// Shifts in zeros.
  template <int Bits>
  PlainLanes shiftedRightUnsigned() const {
    return {static_cast<std::int32_t>(static_cast<std::uint32_t>(l) >> Bits),
            static_cast<std::int32_t>(static_cast<std::uint32_t>(r) >> Bits)};
  }
  PlainLanes notBelowZero() const { return {std::max(l, 0), std::max(r, 0)}; }
  PlainLanes saturated() const { return {cofu::core::saturate(l), cofu::core::saturate(r)}; }

  /// Writes both lanes out as samples, saturated.
  void storeSaturated(std::int16_t& left, std::int16_t& right) const {
    left = static_cast<std::int16_t>(cofu::core::saturate(l));
    right = static_cast<std::int16_t>(cofu::core::saturate(r));
  }
};

#if defined(__SSE2__)
/// The same arithmetic in the even lanes of a vector register, where one instruction multiplies 32 by 32 bits. The odd
/// lanes hold rubbish.
struct StereoLanes {
  __m128i v = _mm_setzero_si128();

  static StereoLanes of(std::int32_t left, std::int32_t right) { return {_mm_set_epi32(0, right, 0, left)}; }
  static StereoLanes both(std::int32_t value) { return {_mm_set1_epi32(value)}; }
  std::int32_t left() const { return _mm_cvtsi128_si32(v); }
  std::int32_t right() const { return _mm_cvtsi128_si32(_mm_unpackhi_epi64(v, v)); }

  friend StereoLanes operator+(StereoLanes a, StereoLanes b) { return {_mm_add_epi32(a.v, b.v)}; }
  friend StereoLanes operator-(StereoLanes a, StereoLanes b) { return {_mm_sub_epi32(a.v, b.v)}; }
  friend StereoLanes operator*(StereoLanes a, StereoLanes b) { return {_mm_mul_epu32(a.v, b.v)}; }
  friend StereoLanes operator^(StereoLanes a, StereoLanes b) { return {_mm_xor_si128(a.v, b.v)}; }

  template <int Bits>
  StereoLanes shiftedRight() const {
    return {_mm_srai_epi32(v, Bits)};
  }
  template <int Bits>
  StereoLanes shiftedRightUnsigned() const {
    return {_mm_srli_epi32(v, Bits)};
  }
  StereoLanes notBelowZero() const { return {_mm_andnot_si128(_mm_srai_epi32(v, 31), v)}; }
  StereoLanes saturated() const {
    const __m128i words = saturatedWords();
    return {_mm_srai_epi32(_mm_unpacklo_epi16(words, words), 16)};
  }

  void storeSaturated(std::int16_t& left, std::int16_t& right) const {
    const __m128i words = saturatedWords();
    left = static_cast<std::int16_t>(_mm_cvtsi128_si32(words));
    right = static_cast<std::int16_t>(_mm_extract_epi16(words, 2));
  }

 private:
  __m128i saturatedWords() const {
    return _mm_max_epi16(_mm_packs_epi32(v, v), _mm_set1_epi16(-cofu::core::kFullScale));
  }
};
#else
using StereoLanes = PlainLanes;
#endif

/// Either form.
template <typename T>
concept LanePair = requires(T lanes) {
  lanes.notBelowZero();
};

/// Whether both lanes are zero.
template <LanePair Lanes>
bool isZero(Lanes v) {
  return (v.left() | v.right()) == 0;
}

/// (a * b) >> 15 with a product that wraps at 32 bits.
template <LanePair Lanes>
Lanes mul15(Lanes a, Lanes b) {
  return (a * b).template shiftedRight<15>();
}

/// The leak of values within -65535 .. 65535, whose product does not wrap: v * -32766 / 32768 is v / 16384 - v.
template <LanePair Lanes>
Lanes leak(Lanes v) {
  return v.template shiftedRight<14>() - v;
}

template <LanePair Lanes>
Lanes leakTwice(Lanes v) {
  return leak(leak(v));
}

/// -1 for negative lanes, else 0.
template <LanePair Lanes>
Lanes signOf(Lanes v) {
  return v.template shiftedRight<31>();
}

/// `v` where `sign` is 0, and -v where it is -1.
template <LanePair Lanes>
Lanes withSign(Lanes v, Lanes sign) {
  return (v ^ sign) - sign;
}

}  // namespace tesh::bramel::plugin::sivray::effects::lanes

namespace tesh::bramel::plugin::sivray::effects {
using lanes::PlainLanes;
using lanes::StereoLanes;
}  // namespace tesh::bramel::plugin::sivray::effects
