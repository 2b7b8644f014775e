// The operations that the voice kernel needs beyond those of the registers: reading frames at an index per lane, and
// sums over lanes. Each kernel's source file includes this and compiles it for its own set, so everything here has
// internal linkage.
//
// Words come in two orders. Interleaved: each lane's left sample, then its right one. Split: in each group of four
// lanes, all left samples, then all right ones.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// The frame at `index`, which must not be negative, and behind it the next frame.
inline const std::int16_t* frameAt(const std::int16_t* samples, std::int32_t index) {
  const std::size_t frame = static_cast<std::uint32_t>(index);  // Unsigned, so that no sign extension is needed.
  return samples + frame * 2;
}

/// Four lanes in registers of 128 bits.
template <typename R>
struct FourLanes : R {
  using Integers = typename R::Integers;
  static constexpr int kLanes = 4;

  /// For operations on the four channels of a frame, and on four ramps.
  using Four = FourLanes;

  /// For each lane, the frame at its `index` and the next frame, as pairs of words: a pair of left samples, the first
  /// in the low word, and a pair of right ones.
  static void framePairs(const std::int16_t* samples, Integers index, Integers& left, Integers& right) {
    alignas(R::kBytes) std::int32_t at[kLanes];
    R::storeAligned(at, index);
    const Integers low = sortedPairs(frameAt(samples, at[0]), frameAt(samples, at[1]));
    const Integers high = sortedPairs(frameAt(samples, at[2]), frameAt(samples, at[3]));
    left = R::evens32(low, high);
    right = R::odds32(low, high);
  }

  /// From sums of neighbouring words in the split order: the sums of all left and all right words of a, then of b.
  static Integers channelSums(Integers a, Integers b) { return R::neighbourSums32(a, b); }

 private:
  static Integers sortedPairs(const std::int16_t* first, const std::int16_t* second) {
    return R::swappedMiddles16(R::zipLow64(R::load64(first), R::load64(second)));
  }
};

/// Four lanes of which only the first is used, for a single voice.
template <typename R>
struct FirstLane : FourLanes<R> {
  using Integers = typename R::Integers;

  static void framePairs(const std::int16_t* samples, Integers index, Integers& left, Integers& right) {
    left = R::swappedLowMiddles16(R::load64(frameAt(samples, R::first32(index))));
    right = R::template shiftRightUnsigned64<32>(left);
  }
};

/// Eight lanes, which are both quads, in registers of 256 bits.
template <typename R>
struct EightLanes : R {
  using Integers = typename R::Integers;
  static constexpr int kLanes = 8;
  using Four = FourLanes<typename R::Half>;

  static void framePairs(const std::int16_t* samples, Integers index, Integers& left, Integers& right) {
    alignas(R::kBytes) std::int32_t at[kLanes];
    R::storeAligned(at, index);
    asm("" : "+m"(at));  // Without this the compiler extracts the indices from the vector by slow shuffles.
    // Shuffles work within each half, so the first vector takes lanes 0 1 4 5 and the second 2 3 6 7.
    const Integers low = sortedPairs(samples, at[0], at[1], at[4], at[5]);
    const Integers high = sortedPairs(samples, at[2], at[3], at[6], at[7]);
    left = R::evens32(low, high);
    right = R::odds32(low, high);
  }

  static typename Four::Integers channelSums(Integers a, Integers b) {
    const Integers sums = R::neighbourSums32(a, b);
    return Four::add32(R::lower(sums), R::upper(sums));
  }

 private:
  /// The frame pairs at four indices, with each lane's pair of left samples before its pair of right ones. Loading
  /// whole vectors and blending them is faster than gathers, and uses less of the one unit that moves data across
  /// lanes.
  static Integers sortedPairs(const std::int16_t* samples, std::int32_t a, std::int32_t b, std::int32_t c,
                              std::int32_t d) {
    const auto filled = [samples](std::int32_t index) { return R::loadAll64(frameAt(samples, index)); };
    const Integers first = R::template eitherOf32<0b00001100>(filled(a), filled(b));
    const Integers second = R::template eitherOf32<0b11000000>(filled(c), filled(d));
    return R::swappedMiddles16(R::template eitherOf32<0b11110000>(first, second));
  }
};

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
