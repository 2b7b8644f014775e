// The voices' tables, computed once, and the gains and pitches that are read from them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

struct VoiceTables {
  static constexpr std::int32_t kSemitones = 51;
  static constexpr std::int32_t kCents = 100;

  VoiceTables();

  std::array<std::int32_t, 128> velocity;  ///< 24-bit gain in steps of 0.2 dB up to 0 dB; 0 for velocity 0.
  std::array<std::int32_t, 128> lowBoost;  ///< 24-bit feedback of the low boost, in even steps from -0.5 to 0.999.
  std::array<float, kSemitones> semitone;  ///< Frequency ratios of -25 to +25 semitones, rounded to six decimals.
  std::array<float, kCents> cent;          ///< Frequency ratios of 0 to 99 cents, rounded to six decimals.
};

/// The process's set of tables. The first call computes them, when the first voices are made.
const VoiceTables& voiceTables() SIVRAY_NONBLOCKING;

/// Gain for a pad's Level (0 to 127) at a velocity of 1 to 127, with 8192 for 1.0; 32194 at most. 0 for a muted voice
/// and for a velocity outside that range.
std::int32_t levelGain(std::int32_t level, std::int32_t velocity, bool muted) SIVRAY_NONBLOCKING;

/// Q15 gain of the right channel for a Pan of 0 to 127; the left channel's gain is 32767 less this.
std::int32_t panGain(std::int32_t pan) SIVRAY_NONBLOCKING;

/// Q15 feedback of the low boost for a Low Boost of 0 to 127; negative below 43, which reduces lows.
std::int32_t lowBoostGain(std::int32_t amount) SIVRAY_NONBLOCKING;

/// Frames per sample, Q16, for a pitch in cents counted from 26 semitones below the wave's own pitch.
std::uint32_t pitchIncrement(std::int32_t pitchCents, float ratio) SIVRAY_NONBLOCKING;

/// The wave's sample rate divided by the engine's.
float rateRatio(float waveRate) SIVRAY_NONBLOCKING;

}  // namespace tesh::bramel::plugin::sivray
