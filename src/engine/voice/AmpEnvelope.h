// The amplitude envelope of the voices: full gain, then a decay whose length follows the length of the wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "core/RealTime.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"

namespace tesh::bramel::plugin::sivray {

class PadValues;

/// Works on the lanes' envelope fields. The decay steps through 128 level indices, from 127 (full gain) to 0 (closed);
/// each new index gives the lane's envelope ramp a new target. In gate mode the decay begins with the note-off; in
/// one-shot mode with the note-on, and an EGTime of 127 then means no decay at all. Audio thread.
class AmpEnvelope {
 public:
  AmpEnvelope(VoiceBank& voiceBank, RampBank& rampBank) : bank(voiceBank), ramps(rampBank) {}

  /// Opens the envelope of a voice that starts. The lane's wave length and rate must be set.
  void start(std::size_t lane, const PadValues& pad) SIVRAY_NONBLOCKING;

  /// Samples until the level index changes or the envelope closes, at least 1 and at most `frames`.
  int framesToStep(std::size_t lane, int frames) const SIVRAY_NONBLOCKING {
    if (!isDecaying(lane)) {
      return frames;
    }
    if (closesNow(lane)) {
      return 1;
    }
    return indexAfter(lane, frames) == bank.levelIndex[lane] ? frames : firstStep(lane, frames);
  }

  /// Advances the envelope by `frames` samples, at most the result of `framesToStep`.
  void advance(std::size_t lane, int frames) SIVRAY_NONBLOCKING {
    if (!isDecaying(lane)) {
      return;
    }
    const std::int32_t index = indexAfter(lane, frames);
    bank.envelopeCounter[lane] = counterAfter(lane, frames);
    if (index != bank.levelIndex[lane]) {
      bank.levelIndex[lane] = index;
      ramps.setTarget(bank.rampOf(lane, LaneRamp::envelope), gainAt(index));
    }
    bank.envelopeFinished[lane] = bank.envelopeFinished[lane] || closesNow(lane);
  }

  /// Q15 gain at a level index of 0 to 127. 520 / 256 brings 127 * 127 to 32762, just below full scale.
  static constexpr std::int32_t gainAt(std::int32_t index) { return (index * index * 520) >> 8; }

  /// The duration of a wave of `length` frames at its own pitch, in samples of the engine.
  static std::int32_t lengthAtEngineRate(std::uint32_t length, float waveRate) SIVRAY_NONBLOCKING;

  /// Samples that the decay takes from index 127 to 0, at least 1: 1.5 times the wave's duration for an EGTime of 127,
  /// and in proportion to the square of EGTime + 1 below it.
  static std::int32_t decaySamples(std::int32_t lengthInSamples, std::int32_t egTime) SIVRAY_NONBLOCKING;

 private:
  static constexpr std::int32_t kFullIndex = 127;
  static constexpr std::int32_t kNoDecay = 127;  ///< The EGTime of a one-shot that never decays.

  bool isDecaying(std::size_t lane) const {
    return bank.gateMode[lane] ? bank.phase[lane] == EnvelopePhase::released : bank.egTime[lane] != kNoDecay;
  }
  bool closesNow(std::size_t lane) const {
    return !bank.envelopeFinished[lane] && bank.levelIndex[lane] == 0 && bank.envelopeGain[lane] < 1;
  }

  /// Samples of decay after `frames` more samples. Stays at the largest number, which is reached after more than
  /// thirteen hours.
  std::int32_t counterAfter(std::size_t lane, int frames) const {
    return std::min(bank.envelopeCounter[lane], std::numeric_limits<std::int32_t>::max() - frames) + frames;
  }

  /// The level index after `frames` more samples, truncated in single precision.
  std::int32_t indexAfter(std::size_t lane, int frames) const {
    const float steps = static_cast<float>(counterAfter(lane, frames)) * bank.envelopeSpeed[lane];
    return steps >= static_cast<float>(kFullIndex) ? 0 : kFullIndex - static_cast<std::int32_t>(steps);
  }

  int firstStep(std::size_t lane, int frames) const SIVRAY_NONBLOCKING;

  VoiceBank& bank;
  RampBank& ramps;
};

}  // namespace tesh::bramel::plugin::sivray
