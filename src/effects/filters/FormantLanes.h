// The four bands of the talking modulator side by side.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tesh::bramel::plugin::sivray::effects {

inline constexpr std::size_t kFormantBands = 4;

/// Four 32-bit values, in the plain form for any machine.
struct PlainFormantLanes {
  std::array<std::int32_t, kFormantBands> v{};

  static PlainFormantLanes of(const std::array<std::int32_t, kFormantBands>& values) { return {values}; }
  static PlainFormantLanes all(std::int32_t value) { return {{value, value, value, value}}; }

  friend PlainFormantLanes operator+(const PlainFormantLanes& a, const PlainFormantLanes& b) {
    return each(a, b, cofu::core::wrapAdd);
  }
  friend PlainFormantLanes operator-(const PlainFormantLanes& a, const PlainFormantLanes& b) {
    return each(a, b, cofu::core::wrapSub);
  }
  /// Products of lanes that hold 16-bit values.
  friend PlainFormantLanes operator*(const PlainFormantLanes& a, const PlainFormantLanes& b) {
    return each(a, b, cofu::core::wrapMul);
  }
  template <int kBits>
  PlainFormantLanes shiftedRight() const {
    return each(*this, *this, [](std::int32_t a, std::int32_t) { return a >> kBits; });
  }
  template <int kBits>
  PlainFormantLanes shiftedLeft() const {
    return each(*this, *this, [](std::int32_t a, std::int32_t) { return cofu::core::wrapShiftLeft(a, kBits); });
  }
  /// Limits to -32768 .. 32767.
  PlainFormantLanes limited16() const {
    return each(*this, *this, [](std::int32_t a, std::int32_t) { return std::clamp(a, -32768, 32767); });
  }
  /// The same for a value that is only multiplied.
  PlainFormantLanes limitedFactor() const { return limited16(); }
  bool isZero() const { return v == decltype(v){}; }
  /// The sum of lanes that hold 16-bit values.
  std::int32_t sum() const { return v[0] + v[1] + v[2] + v[3]; }

 private:
  template <typename Op>
  static PlainFormantLanes each(const PlainFormantLanes& a, const PlainFormantLanes& b, Op op) {
    PlainFormantLanes result;
    for (std::size_t i = 0; i < kFormantBands; ++i) {
      result.v[i] = op(a.v[i], b.v[i]);
    }
    return result;
  }
};

#if defined(__SSE2__)
/// The same in a vector register.
struct FormantLanes {
  __m128i v = _mm_setzero_si128();

  static FormantLanes of(const std::array<std::int32_t, kFormantBands>& values) {
    return {_mm_set_epi32(values[3], values[2], values[1], values[0])};
  }
  static FormantLanes all(std::int32_t value) { return {_mm_set1_epi32(value)}; }

  friend FormantLanes operator+(FormantLanes a, FormantLanes b) { return {_mm_add_epi32(a.v, b.v)}; }
  friend FormantLanes operator-(FormantLanes a, FormantLanes b) { return {_mm_sub_epi32(a.v, b.v)}; }

  /// The instruction adds the products of the low and of the high words of each lane: one high word has to be cleared.
  friend FormantLanes operator*(FormantLanes a, FormantLanes b) {
    return {_mm_madd_epi16(a.v, _mm_and_si128(b.v, _mm_set1_epi32(0xFFFF)))};
  }
  template <int kBits>
  FormantLanes shiftedRight() const {
    return {_mm_srai_epi32(v, kBits)};
  }
  template <int kBits>
  FormantLanes shiftedLeft() const {
    return {_mm_slli_epi32(v, kBits)};
  }
  /// A product does not look at the high words.
  FormantLanes limitedFactor() const {
    const __m128i words = _mm_packs_epi32(v, v);
    return {_mm_unpacklo_epi16(words, words)};
  }
  FormantLanes limited16() const {
    const __m128i words = _mm_packs_epi32(v, v);
    return {_mm_srai_epi32(_mm_unpacklo_epi16(words, words), 16)};
  }
  bool isZero() const { return _mm_movemask_epi8(_mm_cmpeq_epi8(v, _mm_setzero_si128())) == 0xFFFF; }
  std::int32_t sum() const {
    const __m128i pairs = _mm_add_epi32(v, _mm_shuffle_epi32(v, _MM_SHUFFLE(1, 0, 3, 2)));
    return _mm_cvtsi128_si32(_mm_add_epi32(pairs, _mm_shuffle_epi32(pairs, _MM_SHUFFLE(2, 3, 0, 1))));
  }
};
#else
using FormantLanes = PlainFormantLanes;
#endif

/// The four resonators. `band` and `low` hold 16-bit values: nothing below the point is ever read.
template <typename Lanes>
struct FormantBank {
  /// The reciprocal of the resonators' Q of 26; Q15.
  static constexpr std::int32_t kDamping = 1241;

  /// Turns the sign and takes a little off, so that a sound dies out; Q15.
  static constexpr std::int32_t kLeak = -32766;

  Lanes band{};
  Lanes low{};

  /// Takes the mono input and the frequency coefficients (0 to 32767), and returns the sum of the band outputs.
  std::int32_t step(std::int32_t x, Lanes frequency) {
    const Lanes damping = Lanes::all(kDamping);
    const Lanes onceA = leaked(band);
    const Lanes a = onceA * Lanes::all(kLeak);
    const Lanes b = timesLeak(leaked(low));
    const Lanes high =
        (Lanes::all(x * 16384) - leaked(onceA) * damping - b).template shiftedRight<15>().limitedFactor();
    band = (high * frequency + a).template shiftedRight<15>().limited16();
    low = (band * frequency + b).template shiftedRight<15>().limited16();
    return band.sum();
  }

 private:
  /// v * kLeak of a 16-bit value. For what the next sample waits for, shifts are faster than a product.
  static Lanes timesLeak(Lanes v) { return v + v - v.template shiftedLeft<15>(); }

  /// (v * kLeak) >> 15.
  static Lanes leaked(Lanes v) { return v.template shiftedRight<14>() - v; }
};

}  // namespace tesh::bramel::plugin::sivray::effects
