// Consecutive samples of one channel side by side in the 16-bit lanes of a vector register, for laws whose feedback is
// older than a register is long: such a law computes as many samples at once as there are lanes.
//
// There are three forms with the same operations and the same results: OneSample, SamplesSse2 and SamplesAvx2 (in
// SampleLanesAvx2.h). A law is a template over the form, `stepAs<Samples>(law, left, right)`, which moves on by
// `Samples::kCount` samples. The template has its own header, with LaneRun.h for rings and loops. Three places
// instantiate it:
//   - the law's `step`, with OneSample: it serves while a value glides, where feedback is too short, and for the rest
//     of a block;
//   - the law's `runSse2`, in the law's source file;
//   - the law's `runAvx2`, in a source file for AVX2 that includes the template between the marks of core/VectorCode.h.
//     The header of the law's class must include neither the template nor LaneRun.h: both would be compiled without
//     AVX2.
// TwoKnobEffect.h tells when it runs which.
//
// Lanes hold -32768 .. 32767. A result must fit them too, except where an operation is said to limit it. +, - and mul15
// of samples wrap in lanes: a result that fits is right even if one on the way does not.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <emmintrin.h>

#include <algorithm>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/ShortLeak.h"
#include "effects/interfaces/WordLanes.h"

// In a namespace of their own, so that the operations are found by their arguments and hide no scalar of the same name.
namespace tesh::bramel::plugin::sivray::effects::lanes {

/// The plain form: one sample in 32-bit arithmetic. The comments here hold for the other forms too.
struct OneSample {
  static constexpr unsigned kCount = 1;

  /// The form of 32-bit lanes that goes with this one, and how many of its registers hold as many samples.
  using Words = OneWord;
  static constexpr unsigned kWords = kCount / Words::kCount;

  /// A Q15 gain for `mul15`, -32767 .. 32767.
  struct Gain {
    explicit Gain(std::int32_t gainQ15) : factor(gainQ15) {}
    std::int32_t factor;
  };

  /// What two samples count for in a `weightedSum`, -32768 .. 32767 each.
  struct Weights {
    Weights(std::int32_t first, std::int32_t second) : ofFirst(first), ofSecond(second) {}
    std::int32_t ofFirst;
    std::int32_t ofSecond;
  };

  /// A place between two neighbours, `kBits` (at most 15) of fraction.
  template <int kBits>
  struct Fraction {
    explicit Fraction(std::int32_t fractionBits) : fraction(fractionBits) {}
    std::int32_t fraction;
  };

  /// 32 bits a sample.
  struct Wide {
    std::int32_t v;

    template <int kBits>
    Wide shiftedRight() const {
      return {v >> kBits};
    }
    /// Limits to -32767 .. 32767.
    OneSample saturated() const { return {cofu::core::saturate(v)}; }
    /// Must fit a lane.
    OneSample packed() const { return {v}; }
    /// Limits to all that a lane holds.
    OneSample narrowed() const { return {std::clamp(v, -32768, 32767)}; }
  };

  /// A Q15 gain for `boosted`, 0 .. 131071: up to four.
  struct Boost {
    explicit Boost(std::int32_t gainQ15) : factor(gainQ15) {}
    std::int32_t factor;
  };

  std::int32_t v;

  /// The same sample in all lanes.
  static OneSample all(std::int16_t sample) { return {sample}; }

  /// Samples from `kWords` registers of words, which must fit a lane.
  static OneSample of(const OneWord* words) { return {words->v}; }

  /// The same for words that need not fit: lanes keep their lower 16 bits.
  static OneSample lowerHalvesOf(const OneWord* words) { return of(words); }

  /// Reads or writes `kCount` samples from `samples` on.
  static OneSample load(const std::int16_t* samples) { return {*samples}; }
  void store(std::int16_t* samples) const { *samples = static_cast<std::int16_t>(v); }
};

inline OneSample::Wide operator+(OneSample::Wide a, OneSample::Wide b) { return {cofu::core::wrapAdd(a.v, b.v)}; }

inline OneSample::Wide operator-(OneSample::Wide a, OneSample::Wide b) { return {cofu::core::wrapSub(a.v, b.v)}; }

/// The samples one later: `previous`, then all of `a` but the last, which becomes the new `previous`.
inline OneSample oneLater(OneSample a, std::int16_t& previous) {
  const OneSample later{previous};
  a.store(&previous);
  return later;
}

inline OneSample operator+(OneSample a, OneSample b) { return {a.v + b.v}; }

inline OneSample operator-(OneSample a, OneSample b) { return {a.v - b.v}; }

/// a + b and a - b, limited to -32767 .. 32767.
inline OneSample sum(OneSample a, OneSample b) { return {cofu::core::saturate(a.v + b.v)}; }

inline OneSample difference(OneSample a, OneSample b) { return {cofu::core::saturate(a.v - b.v)}; }

/// (a * gain) >> 15. In the second form each lane has its own gain, -32768 .. 32767; not both may be -32768.
inline OneSample mul15(OneSample a, OneSample::Gain gain) { return {cofu::core::mul15(a.v, gain.factor)}; }

inline OneSample mul15(OneSample a, OneSample gain) { return {cofu::core::mul15(a.v, gain.v)}; }

/// a / 16384 - a, rounded down: turns the sign and takes a little off.
inline OneSample leak(OneSample a) { return {shortLeak(a.v)}; }

/// a * first + b * second.
inline OneSample::Wide weightedSum(OneSample a, OneSample b, OneSample::Weights weights) {
  return {cofu::core::wrapAdd(cofu::core::wrapMul(a.v, weights.ofFirst), cofu::core::wrapMul(b.v, weights.ofSecond))};
}

/// The same with weights of each lane's own, -32768 .. 32767.
inline OneSample::Wide weightedSum(OneSample a, OneSample b, OneSample ofA, OneSample ofB) {
  return weightedSum(a, b, OneSample::Weights(ofA.v, ofB.v));
}

/// (a * boost) >> 15, limited to -32767 .. 32767.
inline OneSample boosted(OneSample a, OneSample::Boost boost) {
  constexpr std::int64_t kLimit = cofu::core::kFullScale;
  const std::int64_t product = std::int64_t{a.v} * boost.factor;
  return {static_cast<std::int32_t>(std::clamp(product >> 15, -kLimit, kLimit))};
}

/// The sample at `place` on the line from `near` to `beyond`, rounded down.
template <int kBits>
inline OneSample between(OneSample near, OneSample beyond, OneSample::Fraction<kBits> place) {
  return {cofu::core::mulShift<kBits>(beyond.v - near.v, place.fraction) + near.v};
}

/// `a`, one step nearer to 0 where it equals `b`.
inline OneSample nearerZeroWhereEqual(OneSample a, OneSample b) {
  return {a.v == b.v ? a.v - ((a.v > 0) - (a.v < 0)) : a.v};
}

/// A Q15 gain split for lanes, whose product keeps the upper 16 of 32 bits: a * gain >> 15 is that of a * `doubled`,
/// plus a * `carried`. `doubled` is twice the gain in 16 bits, `carried` (-1, 0 or 1) what did not fit.
struct SplitGain {
  explicit SplitGain(std::int32_t gainQ15)
      : doubled(static_cast<std::int16_t>(2 * gainQ15)),
        carried(static_cast<std::int16_t>((2 * gainQ15 - doubled) / 65536)) {}
  std::int16_t doubled;
  std::int16_t carried;
};

/// A gain of up to four as a part below one and the rest, one and two, each as a mask. All have the sample's sign, so
/// that sums which stop at the ends of a lane may add them one by one.
struct SplitBoost {
  explicit SplitBoost(std::int32_t gainQ15)
      : part(gainQ15 & 32767),
        once(static_cast<std::int16_t>(-((gainQ15 >> 15) & 1))),
        twice(static_cast<std::int16_t>(-((gainQ15 >> 16) & 1))) {}
  std::int32_t part;
  std::int16_t once;
  std::int16_t twice;
};

/// The two weights of a place between neighbours. Weights of 15 bits that put all on one neighbour would not fit a
/// lane: they are halved, and so is what the sum is divided by.
struct SplitFraction {
  SplitFraction(std::int32_t fraction, int fractionBits)
      : bits(fractionBits == 15 && fraction == 0 ? 14 : fractionBits), near((1 << bits) - fraction), beyond(fraction) {}
  int bits;
  std::int32_t near;
  std::int32_t beyond;
};

/// Two weights as the pair of words that multiply-and-add takes.
constexpr std::int32_t pairOfWords(std::int32_t first, std::int32_t second) {
  return static_cast<std::int32_t>((static_cast<std::uint32_t>(second) << 16) |
                                   (static_cast<std::uint32_t>(first) & 0xFFFF));
}

/// Limits -32768 to -32767.
inline __m128i limited(__m128i words) { return _mm_max_epi16(words, _mm_set1_epi16(-cofu::core::kFullScale)); }

/// Eight samples.
struct SamplesSse2 {
  static constexpr unsigned kCount = 8;
  using Words = WordsSse2;
  static constexpr unsigned kWords = kCount / Words::kCount;

  struct Gain {
    explicit Gain(std::int32_t gainQ15) : Gain(SplitGain(gainQ15)) {}
    explicit Gain(SplitGain split) : doubled(_mm_set1_epi16(split.doubled)), carried(_mm_set1_epi16(split.carried)) {}
    __m128i doubled;
    __m128i carried;
  };

  struct Weights {
    Weights(std::int32_t first, std::int32_t second) : pairs(_mm_set1_epi32(pairOfWords(first, second))) {}
    __m128i pairs;
  };

  template <int kBits>
  struct Fraction {
    explicit Fraction(std::int32_t fraction) : Fraction(SplitFraction(fraction, kBits)) {}
    explicit Fraction(SplitFraction split) : weights(split.near, split.beyond), shift(_mm_cvtsi32_si128(split.bits)) {}
    Weights weights;
    __m128i shift;
  };

  /// The lower samples, then the upper ones.
  struct Wide {
    __m128i low;
    __m128i high;

    template <int kBits>
    Wide shiftedRight() const {
      return {_mm_srai_epi32(low, kBits), _mm_srai_epi32(high, kBits)};
    }
    SamplesSse2 saturated() const { return {limited(_mm_packs_epi32(low, high))}; }
    SamplesSse2 packed() const { return {_mm_packs_epi32(low, high)}; }
    SamplesSse2 narrowed() const { return packed(); }
  };

  struct Boost {
    explicit Boost(std::int32_t gainQ15) : Boost(SplitBoost(gainQ15)) {}
    explicit Boost(SplitBoost split)
        : part(split.part), once(_mm_set1_epi16(split.once)), twice(_mm_set1_epi16(split.twice)) {}
    Gain part;
    __m128i once;
    __m128i twice;
  };

  __m128i v;

  static SamplesSse2 all(std::int16_t sample) { return {_mm_set1_epi16(sample)}; }
  static SamplesSse2 of(const WordsSse2* words) { return {_mm_packs_epi32(words[0].v, words[1].v)}; }
  static SamplesSse2 lowerHalvesOf(const WordsSse2* words) {
    return {_mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(words[0].v, 16), 16),
                            _mm_srai_epi32(_mm_slli_epi32(words[1].v, 16), 16))};
  }
  static SamplesSse2 load(const std::int16_t* samples) {
    return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(samples))};
  }
  void store(std::int16_t* samples) const { _mm_storeu_si128(reinterpret_cast<__m128i*>(samples), v); }
};

inline SamplesSse2::Wide operator+(SamplesSse2::Wide a, SamplesSse2::Wide b) {
  return {_mm_add_epi32(a.low, b.low), _mm_add_epi32(a.high, b.high)};
}

inline SamplesSse2::Wide operator-(SamplesSse2::Wide a, SamplesSse2::Wide b) {
  return {_mm_sub_epi32(a.low, b.low), _mm_sub_epi32(a.high, b.high)};
}

inline SamplesSse2 oneLater(SamplesSse2 a, std::int16_t& previous) {
  const __m128i later = _mm_insert_epi16(_mm_slli_si128(a.v, 2), previous, 0);
  previous = static_cast<std::int16_t>(_mm_extract_epi16(a.v, 7));
  return {later};
}

inline SamplesSse2 operator+(SamplesSse2 a, SamplesSse2 b) { return {_mm_add_epi16(a.v, b.v)}; }

inline SamplesSse2 operator-(SamplesSse2 a, SamplesSse2 b) { return {_mm_sub_epi16(a.v, b.v)}; }

inline SamplesSse2 sum(SamplesSse2 a, SamplesSse2 b) { return {limited(_mm_adds_epi16(a.v, b.v))}; }

inline SamplesSse2 difference(SamplesSse2 a, SamplesSse2 b) { return {limited(_mm_subs_epi16(a.v, b.v))}; }

inline SamplesSse2 mul15(SamplesSse2 a, const SamplesSse2::Gain& gain) {
  return {_mm_add_epi16(_mm_mulhi_epi16(a.v, gain.doubled), _mm_mullo_epi16(a.v, gain.carried))};
}

inline SamplesSse2 mul15(SamplesSse2 a, SamplesSse2 gain) {
  const __m128i upper = _mm_mulhi_epi16(a.v, gain.v);
  return {_mm_or_si128(_mm_add_epi16(upper, upper), _mm_srli_epi16(_mm_mullo_epi16(a.v, gain.v), 15))};
}

inline SamplesSse2 leak(SamplesSse2 a) { return {_mm_sub_epi16(_mm_srai_epi16(a.v, 14), a.v)}; }

inline SamplesSse2::Wide weightedSum(SamplesSse2 a, SamplesSse2 b, const SamplesSse2::Weights& weights) {
  return {_mm_madd_epi16(_mm_unpacklo_epi16(a.v, b.v), weights.pairs),
          _mm_madd_epi16(_mm_unpackhi_epi16(a.v, b.v), weights.pairs)};
}

inline SamplesSse2::Wide weightedSum(SamplesSse2 a, SamplesSse2 b, SamplesSse2 ofA, SamplesSse2 ofB) {
  return {_mm_madd_epi16(_mm_unpacklo_epi16(a.v, b.v), _mm_unpacklo_epi16(ofA.v, ofB.v)),
          _mm_madd_epi16(_mm_unpackhi_epi16(a.v, b.v), _mm_unpackhi_epi16(ofA.v, ofB.v))};
}

inline SamplesSse2 boosted(SamplesSse2 a, const SamplesSse2::Boost& boost) {
  const __m128i single = _mm_adds_epi16(mul15(a, boost.part).v, _mm_and_si128(a.v, boost.once));
  return {limited(_mm_adds_epi16(single, _mm_and_si128(_mm_adds_epi16(a.v, a.v), boost.twice)))};
}

template <int kBits>
inline SamplesSse2 between(SamplesSse2 near, SamplesSse2 beyond, const SamplesSse2::Fraction<kBits>& place) {
  const SamplesSse2::Wide both = weightedSum(near, beyond, place.weights);
  return {_mm_packs_epi32(_mm_sra_epi32(both.low, place.shift), _mm_sra_epi32(both.high, place.shift))};
}

inline SamplesSse2 nearerZeroWhereEqual(SamplesSse2 a, SamplesSse2 b) {
  const __m128i sign = _mm_sub_epi16(_mm_cmplt_epi16(a.v, __m128i{}), _mm_cmpgt_epi16(a.v, __m128i{}));
  return {_mm_sub_epi16(a.v, _mm_and_si128(_mm_cmpeq_epi16(a.v, b.v), sign))};
}

}  // namespace tesh::bramel::plugin::sivray::effects::lanes

namespace tesh::bramel::plugin::sivray::effects {
using lanes::OneSample;
using lanes::SamplesSse2;
}  // namespace tesh::bramel::plugin::sivray::effects
