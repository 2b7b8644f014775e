// The plain lanes: one value at a time, in 32-bit arithmetic. They define the result of every operation in WordLanes.h
// and SampleLanes.h. Also the numbers that those operations derive from gains and weights.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/LaneConcepts.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The leak of core/FixedPoint.h, v / 16384 - v, for values within -65536 .. 65536, where its product does not wrap.
constexpr std::int32_t shortLeak(std::int32_t v) { return (v >> 14) - v; }

}  // namespace tesh::bramel::plugin::sivray::effects

// A separate namespace, so that the operations are found by their arguments and hide no scalar function of the same
// name.
namespace tesh::bramel::plugin::sivray::effects::lanes {

/// One word. The comments here also hold for words in registers.
struct OneWord {
  static constexpr unsigned kCount = 1;

  std::int32_t v;

  static OneWord all(std::int32_t value) { return {value}; }

  /// The next phases after `phase`: phase + step, phase + 2 * step ...
  static OneWord after(std::int32_t phase, std::int32_t step) { return {cofu::core::wrapAdd(phase, step)}; }

  static OneWord load(const std::int32_t* words) { return {*words}; }
  static OneWord ofSamples(const std::int16_t* samples) { return {*samples}; }
  void store(std::int32_t* words) const { *words = v; }

  /// Applies `make` to each word.
  template <typename Make>
  OneWord mapped(Make make) const {
    return {make(v)};
  }
  template <int kBits>
  OneWord shiftedRight() const {
    return {v >> kBits};
  }
  template <int kBits>
  OneWord shiftedLeft() const {
    return {cofu::core::wrapShiftLeft(v, kBits)};
  }
  /// The lower 16 bits, sign-extended.
  OneWord lowerHalves() const { return {static_cast<std::int16_t>(v)}; }
  /// Shifts in zeros.
  template <int kBits>
  OneWord shiftedRightUnsigned() const {
    return {static_cast<std::int32_t>(static_cast<std::uint32_t>(v) >> kBits)};
  }
};

inline OneWord operator+(OneWord a, OneWord b) { return {cofu::core::wrapAdd(a.v, b.v)}; }
inline OneWord operator-(OneWord a, OneWord b) { return {cofu::core::wrapSub(a.v, b.v)}; }

/// The low 32 bits of the product.
inline OneWord operator*(OneWord a, OneWord b) { return {cofu::core::wrapMul(a.v, b.v)}; }
inline OneWord operator&(OneWord a, OneWord b) { return {a.v & b.v}; }

/// |a|, which stays -2^31 for -2^31.
inline OneWord magnitude(OneWord a) { return {cofu::core::wrapAbs(a.v)}; }

/// The leak of core/FixedPoint.h, for values within -65535 .. 65535.
inline OneWord leak(OneWord a) { return {shortLeak(a.v)}; }

inline bool isAnyNegative(OneWord a) { return a.v < 0; }

inline OneWord smaller(OneWord a, OneWord b) { return {std::min(a.v, b.v)}; }
inline OneWord larger(OneWord a, OneWord b) { return {std::max(a.v, b.v)}; }

/// (a * b) >> kBits with an unsigned 64-bit product. The result must fit 32 bits.
template <int kBits>
OneWord product(OneWord a, OneWord b) {
  const std::uint64_t whole = std::uint64_t{static_cast<std::uint32_t>(a.v)} * static_cast<std::uint32_t>(b.v);
  return {static_cast<std::int32_t>(whole >> kBits)};
}

/// As above, with a signed product; the lower 32 bits are kept.
template <int kBits>
OneWord signedProduct(OneWord a, OneWord b) {
  return {static_cast<std::int32_t>((std::int64_t{a.v} * b.v) >> kBits)};
}

/// (a * b) >> 15 with a product that wraps at 32 bits.
inline OneWord mul15(OneWord a, OneWord b) { return {cofu::core::mul15(a.v, b.v)}; }

/// `a`, limited to -limit .. limit.
inline OneWord limited(OneWord a, std::int32_t limit) { return {std::clamp(a.v, -limit, limit)}; }

/// a * factor, both -32768 .. 32767.
inline OneWord timesShort(OneWord a, std::int16_t factor) { return {a.v * factor}; }

/// One sample in 32-bit arithmetic. The comments here also hold for samples in registers.
struct OneSample {
  static constexpr unsigned kCount = 1;

  /// The corresponding 32-bit lanes, and how many of their registers hold as many samples.
  using Words = OneWord;
  static constexpr unsigned kWords = kCount / Words::kCount;

  /// A Q15 gain for `mul15`, -32767 .. 32767.
  struct Gain {
    explicit Gain(std::int32_t gainQ15) : factor(gainQ15) {}
    std::int32_t factor;
  };

  /// The weights of two samples in a `weightedSum`, -32768 .. 32767 each.
  struct Weights {
    Weights(std::int32_t first, std::int32_t second) : ofFirst(first), ofSecond(second) {}
    std::int32_t ofFirst;
    std::int32_t ofSecond;
  };

  /// A position between two neighbours, with a fraction of `kBits` (at most 15).
  template <int kBits>
  struct Fraction {
    explicit Fraction(std::int32_t fractionBits) : fraction(fractionBits) {}
    std::int32_t fraction;
  };

  /// Samples of 32 bits.
  struct Wide {
    std::int32_t v;

    template <int kBits>
    Wide shiftedRight() const {
      return {v >> kBits};
    }
    /// Limits to -32767 .. 32767.
    OneSample saturated() const { return {cofu::core::saturate(v)}; }
    /// The value must fit a lane.
    OneSample packed() const { return {v}; }
    /// Limits to the range of a lane.
    OneSample narrowed() const { return {std::clamp(v, -32768, 32767)}; }
  };

  /// A Q15 gain for `boosted`, 0 .. 131071: up to 4.0.
  struct Boost {
    explicit Boost(std::int32_t gainQ15) : factor(gainQ15) {}
    std::int32_t factor;
  };

  std::int32_t v;

  /// The same sample in all lanes.
  static OneSample all(std::int16_t sample) { return {sample}; }

  /// Samples from `kWords` registers of words, whose values must fit a lane.
  static OneSample of(const OneWord* words) { return {words->v}; }

  /// As above, for values that need not fit: lanes keep their lower 16 bits.
  static OneSample lowerHalvesOf(const OneWord* words) { return of(words); }

  /// Reads or writes `kCount` samples from `samples` on.
  static OneSample load(const std::int16_t* samples) { return {*samples}; }
  void store(std::int16_t* samples) const { *samples = static_cast<std::int16_t>(v); }
};

inline OneSample::Wide operator+(OneSample::Wide a, OneSample::Wide b) { return {cofu::core::wrapAdd(a.v, b.v)}; }

inline OneSample::Wide operator-(OneSample::Wide a, OneSample::Wide b) { return {cofu::core::wrapSub(a.v, b.v)}; }

/// The samples delayed by one: `previous`, then all of `a` except its last, which becomes the new `previous`.
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

/// (a * gain) >> 15. In the second overload each lane has its own gain, -32768 .. 32767; not both may be -32768.
inline OneSample mul15(OneSample a, OneSample::Gain gain) { return {cofu::core::mul15(a.v, gain.factor)}; }

inline OneSample mul15(OneSample a, OneSample gain) { return {cofu::core::mul15(a.v, gain.v)}; }

/// a / 16384 - a, rounded down: inverts the sign and attenuates slightly.
inline OneSample leak(OneSample a) { return {shortLeak(a.v)}; }

/// a * first + b * second.
inline OneSample::Wide weightedSum(OneSample a, OneSample b, OneSample::Weights weights) {
  return {cofu::core::wrapAdd(cofu::core::wrapMul(a.v, weights.ofFirst), cofu::core::wrapMul(b.v, weights.ofSecond))};
}

/// As above, with weights per lane, -32768 .. 32767.
inline OneSample::Wide weightedSum(OneSample a, OneSample b, OneSample ofA, OneSample ofB) {
  return weightedSum(a, b, OneSample::Weights(ofA.v, ofB.v));
}

/// (a * boost) >> 15, limited to -32767 .. 32767.
inline OneSample boosted(OneSample a, OneSample::Boost boost) {
  constexpr std::int64_t kLimit = cofu::core::kFullScale;
  const std::int64_t product = std::int64_t{a.v} * boost.factor;
  return {static_cast<std::int32_t>(std::clamp(product >> 15, -kLimit, kLimit))};
}

/// The interpolated sample at `place` between `near` and `beyond`, rounded down.
template <int kBits>
inline OneSample between(OneSample near, OneSample beyond, OneSample::Fraction<kBits> place) {
  return {cofu::core::mulShift<kBits>(beyond.v - near.v, place.fraction) + near.v};
}

/// `a`, moved one step towards 0 where it equals `b`.
inline OneSample nearerZeroWhereEqual(OneSample a, OneSample b) {
  return {a.v == b.v ? a.v - ((a.v > 0) - (a.v < 0)) : a.v};
}

static_assert(SampleKind<OneSample>);

/// Words converted to samples, limited to -32767 .. 32767. In registers the samples fill a register of half the width.
template <typename Samples>
struct Two {
  Samples first;
  Samples second;
};
inline Two<OneSample> saturatedSamples(OneWord a, OneWord b) {
  return {{cofu::core::saturate(a.v)}, {cofu::core::saturate(b.v)}};
}

/// A Q15 gain split for lanes, whose products keep the upper 16 of 32 bits: (a * gain) >> 15 is that of a * `doubled`,
/// plus a * `carried`. `doubled` is twice the gain in 16 bits, `carried` (-1, 0 or 1) the overflow.
struct SplitGain {
  explicit SplitGain(std::int32_t gainQ15)
      : doubled(static_cast<std::int16_t>(2 * gainQ15)),
        carried(static_cast<std::int16_t>((2 * gainQ15 - doubled) / 65536)) {}
  std::int16_t doubled;
  std::int16_t carried;
};

/// A gain of up to 4.0, split into a fraction below 1.0 and the integers one and two, each as a mask. All terms have
/// the sample's sign, so sums that saturate at the ends of a lane may add them one by one.
struct SplitBoost {
  explicit SplitBoost(std::int32_t gainQ15)
      : part(gainQ15 & 32767),
        once(static_cast<std::int16_t>(-((gainQ15 >> 15) & 1))),
        twice(static_cast<std::int16_t>(-((gainQ15 >> 16) & 1))) {}
  std::int32_t part;
  std::int16_t once;
  std::int16_t twice;
};

/// The two weights of a position between neighbours. Weights of 15 bits would not fit a lane if one neighbour had all
/// the weight: they are halved, and so is the divisor of the sum.
struct SplitFraction {
  SplitFraction(std::int32_t fraction, int fractionBits)
      : bits(fractionBits == 15 && fraction == 0 ? 14 : fractionBits), near((1 << bits) - fraction), beyond(fraction) {}
  int bits;
  std::int32_t near;
  std::int32_t beyond;
};

/// Two weights as a pair of words for a multiply-and-add.
constexpr std::int32_t pairOfWords(std::int32_t first, std::int32_t second) {
  return static_cast<std::int32_t>((static_cast<std::uint32_t>(second) << 16) |
                                   (static_cast<std::uint32_t>(first) & 0xFFFF));
}

}  // namespace tesh::bramel::plugin::sivray::effects::lanes

namespace tesh::bramel::plugin::sivray::effects {
using lanes::OneSample;
}  // namespace tesh::bramel::plugin::sivray::effects
