// Tells whether an effect's input and memory are silent.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Whether all bits of `count` samples are 0. Tests 64 bytes at a time, because sound is usually found in the first.
template <typename Sample>
bool isZero(const Sample* samples, std::size_t count) {
  using Words = std::array<std::uint64_t, 8>;
  const auto* bytes = reinterpret_cast<const unsigned char*>(samples);
  std::size_t left = count * sizeof(Sample);
  for (; left >= sizeof(Words); bytes += sizeof(Words), left -= sizeof(Words)) {
    Words words;
    std::memcpy(&words, bytes, sizeof(Words));
    if ((words[0] | words[1] | words[2] | words[3] | words[4] | words[5] | words[6] | words[7]) != 0) {
      return false;
    }
  }
  return std::all_of(bytes, bytes + left, [](unsigned char byte) { return byte == 0; });
}

inline bool isZero(StereoBlock block, std::size_t count) {
  return isZero(block.left, count) && isZero(block.right, count);
}

/// Whether the `count` samples of a ring before index `end` are zero. `length` is a power of two, at least `count`.
template <typename Sample>
bool isZeroBefore(const Sample* ring, std::size_t length, std::size_t end, std::size_t count) {
  if (count == 0) {
    return true;
  }
  const std::size_t start = (end - count) & (length - 1);
  const std::size_t toEnd = std::min(count, length - start);
  return isZero(ring + start, toEnd) && isZero(ring, count - toEnd);
}

/// Moves `follower` by up to `count` steps. Stops when a step leaves it unchanged, because all later ones would too.
template <typename Follower, typename Step>
void moveToRest(Follower& follower, unsigned count, Step&& step) {
  for (unsigned i = 0; i < count; ++i) {
    const Follower before = follower;
    step(follower);
    if (follower == before) {
      return;
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
