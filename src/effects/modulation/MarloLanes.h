// The number of consecutive samples of one channel that the Marlo effects compute at once, in single precision: one, or
// as many as a register holds. MarloOne and MarloIn have the same operations. MarloStep.h tells who may include this.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

/// One sample. The comments hold for MarloIn too.
struct MarloOne {
  static constexpr unsigned kCount = 1;
  using Floats = float;
  using Integers = std::int32_t;

  /// Calls `make()` for each sample in order.
  template <typename Make>
  static float made(Make&& make) {
    return make();
  }

  static float load(const std::int16_t* samples) { return static_cast<float>(*samples); }

  /// Truncates to 16 bits. The results must fit.
  static void store(std::int16_t* samples, float x) { *samples = static_cast<std::int16_t>(x); }

  static float magnitude(float x) { return std::fabs(x); }

  /// `x`, less `amount` if it is above `top`.
  static float lessWhereAbove(float x, float top, float amount) { return x > top ? x - amount : x; }

  static std::int32_t truncated(float x) { return static_cast<std::int32_t>(x); }
  static float floatsOf(std::int32_t x) { return static_cast<float>(x); }

  /// The first sample's index and those below it, wrapping at a power of two.
  static std::int32_t downwards(std::int32_t first, std::int32_t) { return first; }

  /// Writes the samples to the entries from `at` downwards, without wrapping.
  static void storeDownwards(float* at, float x) { *at = x; }

  /// The entries at the indices, and the entries after them.
  static void readPairs(const float* from, std::int32_t index, float& first, float& second) {
    const auto i = static_cast<std::uint32_t>(index);
    first = from[i];
    second = from[i + 1];
  }
};

/// As many samples as a register of `R` holds.
template <typename R>
struct MarloIn {
  using Registers = R;
  using Floats = typename R::Floats;
  using Integers = typename R::Integers;
  static constexpr unsigned kCount = R::kBytes / sizeof(float);
  static constexpr unsigned kQuads = kCount / 4;

  /// No sample goes through memory, where a register would have to wait until all of its lanes are written.
  template <typename Make>
  static Floats made(Make&& make) {
    if constexpr (kQuads == 1) {
      const Floats values{make(), make(), make(), make()};
      return values;
    } else {
      const Floats values{make(), make(), make(), make(), make(), make(), make(), make()};
      return values;
    }
  }

  static Floats load(const std::int16_t* samples) { return R::floatsOf(R::loadWidened16(samples)); }
  static void store(std::int16_t* samples, Floats x) { R::storeNarrowed32(samples, R::truncated(x)); }
  static Floats magnitude(Floats x) { return R::bitsAsFloats(R::bitAnd(R::bitsOfFloats(x), R::all32(0x7FFFFFFF))); }
  static Floats lessWhereAbove(Floats x, float top, float amount) {
    const Integers amounts = R::bitsOfFloats(R::allFloats(amount));
    return x - R::bitsAsFloats(R::bitAnd(R::greaterFloats(x, R::allFloats(top)), amounts));
  }
  static Integers truncated(Floats x) { return R::truncated(x); }
  static Floats floatsOf(Integers v) { return R::floatsOf(v); }
  static Integers downwards(std::int32_t first, std::int32_t length) {
    return R::bitAnd(R::sub32(R::all32(first + 1), R::multiples32(1)), R::all32(length - 1));
  }
  static void storeDownwards(float* at, Floats x) { R::storeFloats(at - (kCount - 1), R::reversed(x)); }
  static void readPairs(const float* from, Integers indices, Floats& first, Floats& second) {
    R::pairsAt(from, indices, first, second);
  }

  static void split(Floats x, MarloQuad* quads) {
    if constexpr (kQuads == 1) {
      quads[0] = x;
    } else {
      quads[0] = R::lower(x);
      quads[1] = R::upper(x);
    }
  }
  static Floats joined(const MarloQuad* quads) {
    if constexpr (kQuads == 1) {
      return quads[0];
    } else {
      return R::joined(quads[0], quads[1]);
    }
  }
  /// Interleaves both channels, two samples per quad; and the reverse.
  static void interleave(Floats left, Floats right, MarloQuad* quads) {
    MarloQuad outer[kQuads];
    MarloQuad inner[kQuads];
    split(R::zipLow32(left, right), outer);
    split(R::zipHigh32(left, right), inner);
    for (unsigned i = 0; i < kQuads; ++i) {
      quads[2 * i] = outer[i];
      quads[2 * i + 1] = inner[i];
    }
  }
  static void separate(const MarloQuad* quads, Floats& left, Floats& right) {
    MarloQuad outer[kQuads];
    MarloQuad inner[kQuads];
    for (unsigned i = 0; i < kQuads; ++i) {
      outer[i] = quads[2 * i];
      inner[i] = quads[2 * i + 1];
    }
    left = R::evens32(joined(outer), joined(inner));
    right = R::odds32(joined(outer), joined(inner));
  }
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
