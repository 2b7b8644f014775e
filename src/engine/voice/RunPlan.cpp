// Looks ahead for the next event of any voice.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/RunPlan.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr int kLongestPlan = 4096;  ///< Frames that a plan looks ahead.

}  // namespace

RunPlan::RunPlan(VoiceBank& voiceBank, RampBank& rampBank, const AmpEnvelope& ampEnvelope, const std::int16_t* samples)
    : bank(voiceBank), ramps(rampBank), envelope(ampEnvelope) {
  run.bank = &voiceBank;
  run.ramps = &rampBank;
  run.samples = samples;
}

void RunPlan::make(int frames, std::size_t voices) {
  run.fading = false;
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    run.step[lane] = bank.remainingQ12[lane] > 0 ? bank.stepSignedQ12[lane] : 0;
    const bool closing = lane < voices && !bank.active[lane] && bank.state[lane] != VoiceState::free;
    run.watched[lane] = closing ? -1 : 0;
    run.fading |= closing || bank.fadeEnabled[lane] != 0;
  }
  run.moving = movingRamps();
  run.fed = fedBuses();
  lasts = ramps.activeCount() == 0 && !run.fading;
  left = lasts ? kLongestPlan : frames;
  for (std::size_t lane = 0; lane < voices; ++lane) {
    left = endsNext(lane) ? 1 : framesToWaveEnd(lane, left);
    left = envelope.framesToStep(lane, left);
  }
}

unsigned RunPlan::movingRamps() const {
  unsigned moving = 0;
  for (std::int32_t position = 0; position < ramps.activeCount(); ++position) {
    moving |= 1U << (static_cast<unsigned>(ramps.movingSlot(position)) % kRampsPerLane);  // By VoicePool's numbering.
  }
  return moving;
}

/// The buses that lanes send to, or may send to while ramps are opening.
Buses RunPlan::fedBuses() const {
  std::int32_t dry = (run.moving & rampBit(LaneRamp::dry)) != 0 ? -1 : 0;
  std::int32_t effect = (run.moving & rampBit(LaneRamp::effect)) != 0 ? -1 : 0;
  const std::int32_t levelMoves = (run.moving & rampBit(LaneRamp::level)) != 0 ? -1 : 0;
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    const std::int32_t audible = bank.levelGain[lane] != 0 ? -1 : levelMoves;
    dry |= audible & bank.gainDry[lane];
    effect |= audible & bank.gainEffect[lane];
  }
  return effect == 0 ? Buses::dry : dry == 0 ? Buses::effect : Buses::both;
}

bool RunPlan::endsNext(std::size_t lane) const {
  if (bank.meterRestart[lane] != 0 && bank.meterEnabled[lane] == 0) {
    return true;  // A meter that is off still takes the first sample after a restart.
  }
  if (bank.active[lane]) {
    return bank.envelopeFinished[lane] || bank.remainingQ12[lane] < 1;
  }
  return bank.state[lane] != VoiceState::free && bank.fadeAmp[lane] < kFadeClosed;
}

int RunPlan::framesToWaveEnd(std::size_t lane, int frames) const {
  const std::int64_t remaining = bank.remainingQ12[lane];
  const std::int64_t step = bank.stepMagnitudeQ12[lane];
  const std::int64_t position = bank.positionQ12[lane];
  const bool back = bank.reversed[lane];
  const std::int64_t travel = step * frames;
  if (remaining < 1 || step == 0 || (travel < remaining && (!back || travel <= position))) {
    return frames;
  }
  std::int64_t toEnd = (remaining - 1) / step + 1;
  if (back) {
    toEnd = std::min(toEnd, position / step + 1);
  }
  return static_cast<int>(std::min<std::int64_t>(toEnd, frames));
}

}  // namespace tesh::bramel::plugin::sivray
