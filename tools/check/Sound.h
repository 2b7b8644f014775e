// Facts about rendered samples: whether they are finite, how loud they are, and a hash.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace sivray::check {

struct Sound {
  std::vector<float> left;
  std::vector<float> right;
};

/// Accumulates facts over consecutive blocks.
class SoundFacts {
 public:
  void add(const float* samples, int frames) {
    for (int i = 0; i < frames; ++i) {
      const float x = samples[i];
      notNumbers += std::isfinite(x) ? 0 : 1;
      subnormals += std::fpclassify(x) == FP_SUBNORMAL ? 1 : 0;
      tooLoud += std::abs(x) > 1.0F ? 1 : 0;
      peak = std::max(peak, std::isfinite(x) ? std::abs(x) : 0.0F);
      hash = (hash ^ std::bit_cast<std::uint32_t>(x)) * kPrime;
    }
  }

  void add(const Sound& sound) {
    add(sound.left.data(), static_cast<int>(sound.left.size()));
    add(sound.right.data(), static_cast<int>(sound.right.size()));
  }

  bool isSane() const { return notNumbers == 0 && subnormals == 0 && tooLoud == 0; }
  bool isHeard() const { return peak > 0.001F; }

  std::int64_t notNumbers = 0;  ///< NaN and infinities.
  std::int64_t subnormals = 0;
  std::int64_t tooLoud = 0;
  float peak = 0.0F;
  std::uint64_t hash = 14695981039346656037U;

 private:
  static constexpr std::uint64_t kPrime = 1099511628211U;
};

}  // namespace sivray::check
