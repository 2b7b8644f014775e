// The gain law that both compressors share: DC block, one peak detector for both channels, envelope, gain.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The state of a compressor's gain law.
struct CompressorGain {
  /// One channel's DC block; its signal has up to 15 more bits than a sample.
  struct DcBlock {
    std::int32_t previousInput = 0;
    std::int32_t highpass = 0;

    /// Takes the input and gives the blocked signal, -1073741823 to 1073741823.
    std::int32_t run(std::int32_t x) {
      constexpr std::int64_t kLimit = 1073741823;
      const std::int64_t decayed = leakTwice((static_cast<std::int64_t>(highpass) * 32512) >> 15);
      highpass = static_cast<std::int32_t>(std::clamp(decayed - previousInput + x, -kLimit, kLimit));
      previousInput = x;
      return highpass;
    }
  };

  DcBlock left;
  DcBlock right;
  std::int32_t peak = 0;
  std::int32_t envelope = 0;
  std::int32_t gain = 0;

  /// The constant term of the gain recursion, the only one with a division. `sens` is above 0.
  static std::int32_t riseFor(std::int32_t sens) { return 32768 / std::max(sens, 1) * 16; }

  /// Takes one sample of both channels, already shifted up. The outputs of the DC blocks are then in `left.highpass`
  /// and `right.highpass`, the gain (0 to 32767) in `gain`.
  void run(std::int32_t leftIn, std::int32_t rightIn, std::int32_t attack, std::int32_t rise) {
    using namespace cofu::core;
    const std::int32_t louder = std::max(std::abs(left.run(leftIn)), std::abs(right.run(rightIn)));
    peak = std::max(louder, (peak >> 15) * 32674);
    envelope += ((peak >> 15) - (envelope >> 15)) * attack;
    gain = saturate(mul15((2147483647 - envelope) >> 16, gain) + rise);
  }

 private:
  /// The leak of 32 bits in 64: v * -32766 / 32768 is v / 16384 - v.
  static std::int64_t leakTwice(std::int64_t v) {
    const std::int64_t once = (v >> 14) - v;
    return (once >> 14) - once;
  }
};

}  // namespace tesh::bramel::plugin::sivray::effects
