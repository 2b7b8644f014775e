// The small network that the room and the gate reverb share: two combs side by side, two allpasses, an output delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Five lines in borrowed memory. Audio thread only; `setMemory` comes before everything else.
class ReverbNetwork {
 public:
  /// Samples of all lines together.
  static constexpr std::size_t kRequiredSamples = 5 * 4096;

  /// What the network gives per sample: the diffused sound, and the same 1676 samples later.
  struct Output {
    std::int32_t early;
    std::int32_t late;
  };

  void setMemory(std::int16_t* memory) { lines = memory; }

  /// Clears the lines. The write position stays.
  void clear() { std::fill_n(lines, kRequiredSamples, std::int16_t{0}); }

  /// One sample through the network.
  Output step(std::int32_t input, std::int32_t feedback) {
    using namespace cofu::core;
    const std::int32_t comb0 = saturate(input + mul15(leak(leak(at(0, kComb0Delay))), feedback));
    const std::int32_t comb1 = saturate(input + mul15(leak(mul15(at(1, kComb1Delay), 32766)), feedback));
    put(0, comb0);
    put(1, comb1);
    const std::int32_t diffused = allpass(2, kAllpass1Delay, saturate(comb0 + comb1));
    const std::int32_t early = allpass(3, kAllpass2Delay, diffused);
    const std::int32_t late = at(4, kOutputDelay);
    put(4, early);
    writeIndex = (writeIndex + 1) & kMask;
    return {early, late};
  }

 private:
  static constexpr unsigned kLineLength = 4096;
  static constexpr unsigned kMask = kLineLength - 1;
  static constexpr unsigned kComb0Delay = 2669;
  static constexpr unsigned kComb1Delay = 2824;
  static constexpr unsigned kAllpass1Delay = 969;
  static constexpr unsigned kAllpass2Delay = 2301;
  static constexpr unsigned kOutputDelay = 1676;
  static constexpr std::int32_t kAllpassGain = 22937;

  std::int32_t at(unsigned line, unsigned delay) const {
    return lines[line * kLineLength + ((writeIndex - delay) & kMask)];
  }

  void put(unsigned line, std::int32_t sample) {
    lines[line * kLineLength + writeIndex] = static_cast<std::int16_t>(sample);
  }

  std::int32_t allpass(unsigned line, unsigned delay, std::int32_t input) {
    using namespace cofu::core;
    const std::int32_t delayed = leak(leak(at(line, delay)));
    const std::int32_t inner = saturate(input - mul15(delayed, kAllpassGain));
    put(line, inner);
    return saturate(mul15(inner, kAllpassGain) + delayed);
  }

  std::int16_t* lines = nullptr;
  unsigned writeIndex = 0;
};

/// The left channel's share of the wet sound in Q15: it hears the network at once, the right one late and in full.
inline constexpr std::int32_t kEarlyGain = 24823;

}  // namespace tesh::bramel::plugin::sivray::effects
