// The tables of the voices, computed once by their rules.
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

  std::array<std::int32_t, 128> velocity;  ///< 24-bit gain in steps of 0.2 dB, 0 for velocity 0
  std::array<std::int32_t, 128> lowBoost;  ///< 24-bit feedback of the low boost
  std::array<float, kSemitones> semitone;  ///< frequency ratio of -25 to +25 semitones, six decimals
  std::array<float, kCents> cent;          ///< frequency ratio of 0 to 99 cents, six decimals
};

/// The one set of tables. The first call computes them; it is made when the first voices are.
const VoiceTables& voiceTables() SIVRAY_NONBLOCKING;

/// 24-bit gain of a pad's level (0 to 127) at a velocity; 0 for a velocity above 127 or below 0.
std::int32_t levelValue(std::int32_t level, std::int32_t velocity, bool muted) SIVRAY_NONBLOCKING;

/// 24-bit gain of the right side for a pan of 0 to 127; the left side has what is left of 1.0.
std::int32_t panValue(std::int32_t pan) SIVRAY_NONBLOCKING;

/// Frames per sample with 16 fraction bits, for a pitch in cents counted from 26 semitones below the wave's own.
std::uint32_t pitchIncrement(std::int32_t pitchCents, float ratio) SIVRAY_NONBLOCKING;

/// The playing rate of a wave against the engine's 44100 Hz.
float rateRatio(float waveRate) SIVRAY_NONBLOCKING;

/// The wave's length in samples of the engine at the wave's own pitch.
std::int32_t lengthAtEngineRate(std::uint32_t length, float waveRate) SIVRAY_NONBLOCKING;

/// Samples that the envelope takes from its start to its end, at least 1.
std::int32_t decaySamples(std::int32_t lengthInSamples, std::int32_t egTime) SIVRAY_NONBLOCKING;

}  // namespace tesh::bramel::plugin::sivray
