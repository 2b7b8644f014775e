// The small network that the room and the gate reverb share: two combs side by side, two all-passes, an output delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/ShortLeak.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Five delay lines in borrowed memory. Audio thread only; `lines` must be set before anything runs. Delays are samples
/// at 44100 Hz, without common factors, so that their echoes do not coincide.
struct ReverbNetwork {
  /// Samples of all lines together.
  static constexpr std::size_t kRequiredSamples = 5 * 4096;

  /// The left channel's share of the wet sound in Q15: it hears the network at once, the right one late and in full.
  static constexpr std::int32_t kEarlyGain = 24823;

  /// Loop gain of the combs by Time knob, Q15: 0.625 to 0.9375 along the convex curve.
  static constexpr std::int32_t feedbackOf(int timeKnob) { return ((valueAt(convexTable, timeKnob) * 5) >> 4) + 20480; }

  /// What the network gives per sample: the diffused sound, and the same 1676 samples later.
  struct Output {
    std::int32_t early;
    std::int32_t late;
  };

  /// One sample through the network; the combs feed back `feedback` (Q15).
  Output stepNetwork(std::int32_t input, std::int32_t feedback) {
    using namespace cofu::core;
    const std::int32_t comb0 = saturate(input + mul15(shortLeakTwice(at(0, kComb0Delay)), feedback));
    // This one turns the sign of its echoes.
    const std::int32_t comb1 = saturate(input + mul15(shortLeak(mul15(at(1, kComb1Delay), kComb1Kept)), feedback));
    put(0, comb0);
    put(1, comb1);
    const std::int32_t diffused = allPass(2, kAllPass1Delay, saturate(comb0 + comb1));
    const std::int32_t early = allPass(3, kAllPass2Delay, diffused);
    const std::int32_t late = at(4, kOutputDelay);
    put(4, early);
    writeIndex = (writeIndex + 1) & kMask;
    return {early, late};
  }

  std::int16_t* lines = nullptr;
  unsigned writeIndex = 0;

 private:
  static constexpr unsigned kLineLength = 4096;
  static constexpr unsigned kMask = kLineLength - 1;
  static constexpr unsigned kComb0Delay = 2669;
  static constexpr unsigned kComb1Delay = 2824;
  static constexpr unsigned kAllPass1Delay = 969;
  static constexpr unsigned kAllPass2Delay = 2301;
  static constexpr unsigned kOutputDelay = 1676;
  static constexpr std::int32_t kComb1Kept = 32766;    ///< Q15: takes a little off, so that the echoes die out.
  static constexpr std::int32_t kAllPassGain = 22937;  ///< 0.7 in Q15.

  std::int32_t at(unsigned line, unsigned delay) const {
    return lines[line * kLineLength + ((writeIndex - delay) & kMask)];
  }

  void put(unsigned line, std::int32_t sample) {
    lines[line * kLineLength + writeIndex] = static_cast<std::int16_t>(sample);
  }

  std::int32_t allPass(unsigned line, unsigned delay, std::int32_t input) {
    using namespace cofu::core;
    const std::int32_t delayed = shortLeakTwice(at(line, delay));
    const std::int32_t inner = saturate(input - mul15(delayed, kAllPassGain));
    put(line, inner);
    return saturate(mul15(inner, kAllPassGain) + delayed);
  }
};

}  // namespace tesh::bramel::plugin::sivray::effects
