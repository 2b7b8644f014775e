// The rules behind the tables, and the values that a voice computes when it starts or its settings move.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoiceTables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::int32_t kUnity24 = 8388607;
constexpr float kEngineRate = 44100.0F;

float sixDecimals(double ratio) { return static_cast<float>(std::round(ratio * 1e6) / 1e6); }

/// Truncates; what lies outside 32 bits becomes the nearest end, which only rates far from any real one reach.
std::int32_t truncateToInt(float value) {
  constexpr float kLimit = 2147483648.0F;
  if (!(value < kLimit)) {
    return std::numeric_limits<std::int32_t>::max();
  }
  return value < -kLimit ? std::numeric_limits<std::int32_t>::min() : static_cast<std::int32_t>(value);
}

}  // namespace

VoiceTables::VoiceTables() : velocity{}, lowBoost{}, semitone{}, cent{} {
  for (std::size_t v = 1; v < velocity.size(); ++v) {
    velocity[v] = static_cast<std::int32_t>(kUnity24 * std::pow(10.0, -0.01 * static_cast<double>(127 - v)));
  }
  for (std::size_t i = 0; i < lowBoost.size(); ++i) {
    lowBoost[i] = -4194303 + 99012 * static_cast<std::int32_t>(i);
  }
  for (std::size_t i = 0; i < semitone.size(); ++i) {
    semitone[i] = sixDecimals(std::exp2((static_cast<double>(i) - 25.0) / 12.0));
  }
  for (std::size_t i = 0; i < cent.size(); ++i) {
    cent[i] = sixDecimals(std::exp2(static_cast<double>(i) / 1200.0));
  }
}

const VoiceTables& voiceTables() {
  return cofu::core::vouchFor([]() -> const VoiceTables& {
    static const VoiceTables tables;
    return tables;
  });
}

std::int32_t levelValue(std::int32_t level, std::int32_t velocity, bool muted) {
  if (muted || velocity < 0 || velocity > 127) {
    return 0;
  }
  const std::int64_t curve = voiceTables().velocity[static_cast<std::size_t>(velocity)];
  return static_cast<std::int32_t>((curve * (std::int64_t{level} * level * 511)) >> 23);
}

std::int32_t panValue(std::int32_t pan) {
  using namespace cofu::core;
  return std::clamp(wrapSub(wrapMul(pan, 66577), 66624), 0, kUnity24);
}

std::uint32_t pitchIncrement(std::int32_t pitchCents, float ratio) {
  const std::int32_t x = pitchCents + 100;
  const std::int32_t semitones = x / 100;
  const std::int32_t cents = std::clamp(x - semitones * 100, 0, VoiceTables::kCents - 1);
  const std::int32_t row = std::clamp(semitones, 0, VoiceTables::kSemitones - 1);
  float increment = voiceTables().semitone[static_cast<std::size_t>(row)];
  increment *= voiceTables().cent[static_cast<std::size_t>(cents)];
  increment *= ratio;
  increment *= 65536.0F;
  // Only rates far from any real one leave 32 bits; they keep the low word.
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(increment));
}

float rateRatio(float waveRate) {
  const double octaves = (std::log(static_cast<double>(waveRate)) - std::log(44100.0)) / std::log(2.0);
  return static_cast<float>(std::exp2(octaves));
}

std::int32_t lengthAtEngineRate(std::uint32_t length, float waveRate) {
  float samples = static_cast<float>(length);
  samples *= kEngineRate;
  samples /= waveRate;
  return truncateToInt(samples);
}

std::int32_t decaySamples(std::int32_t lengthInSamples, std::int32_t egTime) {
  const float t = static_cast<float>(egTime + 1);
  float value = 2.0F * static_cast<float>(lengthInSamples);
  value *= 6.1035156e-5F;
  value *= t;
  value *= t;
  const std::int32_t v = truncateToInt(value);
  const std::int32_t samples = (v >> 2) + (v >> 1);
  return samples == 0 ? 1 : samples;
}

}  // namespace tesh::bramel::plugin::sivray
