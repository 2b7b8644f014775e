// Initial values of the lanes, the swapping of two lanes, and silencing of one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoiceBank.h"

#include <utility>

#include "core/EngineRate.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::int32_t kCentrePan = 64;

/// The destination of each ramp, in the order of LaneRamp.
constexpr std::array<LaneWords VoiceBank::*, kRampsPerLane> kDestinations{
    &VoiceBank::lowBoostGain, &VoiceBank::levelGain, &VoiceBank::rightGain, &VoiceBank::envelopeGain,
    &VoiceBank::fadeAmp,      &VoiceBank::gainDry,   &VoiceBank::gainEffect};

template <typename... Fields>
void swapIn(std::size_t a, std::size_t b, Fields&... fields) {
  (std::swap(fields[a], fields[b]), ...);
}

}  // namespace

VoiceBank::VoiceBank() {
  waveRate.fill(static_cast<float>(cofu::core::kEngineRate));
  padIndex.fill(-1);
  pan.fill(kCentrePan);
  envelopeSpeed.fill(1.0F);
  envelopeFinished.fill(true);
}

void VoiceBank::swapLanes(std::size_t a, std::size_t b) {
  swapIn(a, b, positionQ12, slotBase, punchCurrent, envelopeGain, lowBoostGain, boostState, levelGain, rightGain,
         meterEnabled, meterRestart, peakLeft, peakRight, fadeEnabled, fadeAmp, gainDry, gainEffect);
  swapIn(a, b, length, remainingQ12, stepMagnitudeQ12, stepSignedQ12, reversed, waveRate, ratio, padIndex);
  swapIn(a, b, settingsSeen, lowBoost, level, velocity, muted, pan, fxSend);
  swapIn(a, b, egTime, levelIndex, envelopeSpeed, envelopeCounter, envelopeFinished, phase, gateMode);
  swapIn(a, b, padGroup, ramps, active, live, triggerPending, triggerVelocity, pitchDirty, pitchIncrementQ16,
         pitchCents, state, pad);
}

void VoiceBank::clearLane(std::size_t lane) {
  stepMagnitudeQ12[lane] = 0;
  stepSignedQ12[lane] = 0;
  positionQ12[lane] = 0;
  remainingQ12[lane] = 0;
  settingsSeen[lane] = 0;  // So that a voice that goes on playing gets low boost and pan again.
  lowBoost[lane] = 0;
  boostState[lane] = 0;
  punchCurrent[lane] = 0;
  meterEnabled[lane] = 0;
  meterRestart[lane] = 0;
  peakLeft[lane] = 0;
  peakRight[lane] = 0;
  levelGain[lane] = 0;  // Kernels compute free lanes too; this gain makes them silent.
  pan[lane] = kCentrePan;
  fadeAmp[lane] = 0;
  fadeEnabled[lane] = 0;
}

std::int32_t* VoiceBank::destinationOf(std::size_t lane, LaneRamp ramp) {
  return &(this->*kDestinations[static_cast<std::size_t>(ramp)])[lane];
}

}  // namespace tesh::bramel::plugin::sivray
