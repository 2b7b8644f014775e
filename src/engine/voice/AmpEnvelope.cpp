// Starts an envelope and computes the length of its decay.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/AmpEnvelope.h"

#include "core/EngineRate.h"
#include "core/Truncate.h"
#include "engine/voice/PadValues.h"

namespace tesh::bramel::plugin::sivray {

using cofu::core::kEngineRate;
using cofu::core::truncateToInt;

void AmpEnvelope::start(std::size_t lane, const PadValues& pad) {
  bank.egTime[lane] = pad[PadParameter::egTime];
  bank.levelIndex[lane] = kFullIndex;
  ramps.setNow(bank.rampOf(lane, LaneRamp::envelope), gainAt(kFullIndex));
  const std::int32_t duration = lengthAtEngineRate(bank.length[lane], bank.waveRate[lane]);
  bank.envelopeSpeed[lane] =
      static_cast<float>(kFullIndex) / static_cast<float>(decaySamples(duration, bank.egTime[lane]));
  bank.envelopeCounter[lane] = 0;
  bank.envelopeFinished[lane] = false;
  bank.gateMode[lane] = pad[PadParameter::egMode] != 0;
  bank.phase[lane] = EnvelopePhase::running;
}

/// The first of the next samples, counted from 1, after which the level index differs. It must differ after `frames`.
int AmpEnvelope::firstStep(std::size_t lane, int frames) const {
  int first = 1;
  for (int last = frames; first < last;) {
    const int middle = (first + last) / 2;
    if (indexAfter(lane, middle) == bank.levelIndex[lane]) {
      first = middle + 1;
    } else {
      last = middle;
    }
  }
  return first;
}

std::int32_t AmpEnvelope::lengthAtEngineRate(std::uint32_t length, float waveRate) {
  float samples = static_cast<float>(length);
  samples *= static_cast<float>(kEngineRate);
  samples /= waveRate;
  return truncateToInt(samples);
}

std::int32_t AmpEnvelope::decaySamples(std::int32_t lengthInSamples, std::int32_t egTime) {
  constexpr float kPerSquare = 6.1035156e-5F;  // 1 / (128 * 128)
  const float t = static_cast<float>(egTime + 1);
  float value = 2.0F * static_cast<float>(lengthInSamples);
  value *= kPerSquare;
  value *= t;
  value *= t;
  const std::int32_t doubled = truncateToInt(value);
  const std::int32_t samples = (doubled >> 2) + (doubled >> 1);  // three quarters of the double: 1.5 times
  return samples == 0 ? 1 : samples;
}

}  // namespace tesh::bramel::plugin::sivray
