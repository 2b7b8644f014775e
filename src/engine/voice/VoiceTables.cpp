// Computes the tables, and the values that a voice reads from them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoiceTables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/EngineRate.h"
#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::int32_t kUnity24 = 8388607;  ///< 1.0 on the 24-bit scale.
constexpr int kGainBits = 8;                ///< From the tables' 24-bit scale to the gains' 16-bit scale.

float sixDecimals(double ratio) { return static_cast<float>(std::round(ratio * 1e6) / 1e6); }

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

std::int32_t levelGain(std::int32_t level, std::int32_t velocity, bool muted) {
  if (muted || velocity < 0 || velocity > 127) {
    return 0;
  }
  const std::int64_t curve = voiceTables().velocity[static_cast<std::size_t>(velocity)];
  // 511 brings the square of 127 close to 1.0 on the 24-bit scale.
  return static_cast<std::int32_t>((curve * (std::int64_t{level} * level * 511)) >> 23) >> kGainBits;
}

std::int32_t panGain(std::int32_t pan) {
  using namespace cofu::core;
  constexpr std::int32_t kPerStep = 66577;  // 1.0 in 126 steps, from Pan 1 to 127
  constexpr std::int32_t kOffset = 66624;   // So that Pan 64 is exactly half.
  return std::clamp(wrapSub(wrapMul(pan, kPerStep), kOffset), 0, kUnity24) >> kGainBits;
}

std::int32_t lowBoostGain(std::int32_t amount) {
  return voiceTables().lowBoost[static_cast<std::size_t>(amount & 127)] >> kGainBits;
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
  // More than 32 bits occur only for a wave with an absurd rate; the low word is kept.
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(increment));
}

float rateRatio(float waveRate) {
  const double octaves = (std::log(static_cast<double>(waveRate)) - std::log(cofu::core::kEngineRate)) / std::log(2.0);
  return static_cast<float>(std::exp2(octaves));
}

}  // namespace tesh::bramel::plugin::sivray
