// Start values of the lanes, and the exchange of two of them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoiceBank.h"

#include <utility>

namespace tesh::bramel::plugin::sivray {

namespace {

template <typename... Fields>
void swapIn(std::size_t a, std::size_t b, Fields&... fields) {
  (std::swap(fields[a], fields[b]), ...);
}

}  // namespace

VoiceBank::VoiceBank() {
  waveRate.fill(44100.0F);
  padIndex.fill(-1);
  punchStart.fill(32767);
  pan.fill(64);
  envelopeSpeed.fill(1.0F);
  envelopeFinished.fill(true);
}

void VoiceBank::swapLanes(std::size_t a, std::size_t b) {
  swapIn(a, b, positionQ12, slotBase, punchCurrent, envelopeGain, lowBoostGain, stateLeft, stateRight, levelGain,
         rightGain, meterEnabled, meterRestart, peakLeft, peakRight, fadeEnabled, fadeAmp, gainDry, gainEffect);
  swapIn(a, b, length, remainingQ12, stepMagnitudeQ12, stepSignedQ12, reversed, waveRate, ratio, padIndex);
  swapIn(a, b, lowBoost, punchStart, level, velocity, muted, pan, fxSend);
  swapIn(a, b, egTime, levelIndex, lengthAtEngineRate, envelopeSpeed, envelopeCounter, envelopeFinished, phase,
         gateMode);
  swapIn(a, b, padGroup, ramps, active, live, triggerPending, triggerVelocity, pitchDirty, pitchIncrementQ16,
         pitchCents, state, pad);
}

}  // namespace tesh::bramel::plugin::sivray
