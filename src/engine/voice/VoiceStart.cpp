// Starts a voice stage by stage, and updates its settings while it plays.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoiceStart.h"

#include "core/FixedPoint.h"
#include "engine/voice/PadValues.h"
#include "engine/voice/VoiceTables.h"

namespace tesh::bramel::plugin::sivray {

namespace {

/// Pitch in cents, counted from 26 semitones below the wave's own pitch; that offset covers Pitch 24 and PitchFine 100.
std::int32_t centsOf(const PadValues& pad) {
  return pad[PadParameter::pitch] * 100 - 100 + pad[PadParameter::pitchFine];
}

}  // namespace

void VoiceStart::start(std::size_t lane) {
  const PadValues& pad = *bank.padGroup[lane];
  startWave(lane, pad);
  sendTo(lane, pad[PadParameter::fxSend]);
  bank.pitchCents[lane] = centsOf(pad);
  bank.pitchDirty[lane] = true;
  updatePitch(lane);
  startTone(lane, pad);
  envelope.start(lane, pad);
  startLevels(lane, pad);
  bank.active[lane] = true;
  bank.state[lane] = VoiceState::sounding;
  bank.live[lane] = true;
  bank.fadeEnabled[lane] = 0;
}

void VoiceStart::startWave(std::size_t lane, const PadValues& pad) {
  bank.reversed[lane] = pad[PadParameter::reverse] != 0;
  bank.waveRate[lane] = database.lookup(pad[PadParameter::wave]).sampleRate;
  bank.ratio[lane] = rateRatio(bank.waveRate[lane]);
  bank.padIndex[lane] = bank.pad[lane];
  const PcmSlot& slot = pool.slot(static_cast<std::size_t>(bank.padIndex[lane]));
  bank.slotBase[lane] = pool.frameOf(slot.data);
  bank.length[lane] = static_cast<std::uint32_t>(slot.frames);
  bank.remainingQ12[lane] = static_cast<std::int64_t>(slot.frames) << 12;
  bank.positionQ12[lane] = bank.reversed[lane] ? lastFrameQ12(bank.length[lane]) : 0;
}

void VoiceStart::sendTo(std::size_t lane, std::int32_t bus) {
  constexpr std::int32_t kOpen = cofu::core::kFullScale;
  bank.fxSend[lane] = bus;
  ramps.setTarget(bank.rampOf(lane, LaneRamp::dry), bus == 0 ? kOpen : 0);
  ramps.setTarget(bank.rampOf(lane, LaneRamp::effect), bus == 1 ? kOpen : 0);
}

void VoiceStart::updatePitch(std::size_t lane) {
  if (bank.pitchDirty[lane]) {
    bank.pitchIncrementQ16[lane] = pitchIncrement(bank.pitchCents[lane], bank.ratio[lane]);
    bank.pitchDirty[lane] = false;
  }
  const auto stepQ12 = static_cast<std::int32_t>(bank.pitchIncrementQ16[lane] >> 4);
  bank.stepMagnitudeQ12[lane] = stepQ12;
  bank.stepSignedQ12[lane] = bank.reversed[lane] ? -stepQ12 : stepQ12;
}

void VoiceStart::startTone(std::size_t lane, const PadValues& pad) {
  bank.lowBoost[lane] = pad[PadParameter::lowBoost];
  bank.boostState[lane] = 0;
  ramps.setNow(bank.rampOf(lane, LaneRamp::lowBoost), lowBoostGain(bank.lowBoost[lane]));
  bank.punchCurrent[lane] = (pad[PadParameter::punch] * 256) - 1;
}

void VoiceStart::startLevels(std::size_t lane, const PadValues& pad) {
  bank.velocity[lane] = bank.triggerVelocity[lane];
  bank.muted[lane] = pad[PadParameter::mute] == 1;
  bank.level[lane] = pad[PadParameter::level];
  ramps.setNow(bank.rampOf(lane, LaneRamp::level), levelGain(bank.level[lane], bank.velocity[lane], bank.muted[lane]));
  bank.pan[lane] = pad[PadParameter::pan];
  ramps.setNow(bank.rampOf(lane, LaneRamp::pan), panGain(bank.pan[lane]));
  bank.meterEnabled[lane] = -1;
}

void VoiceStart::update(std::size_t lane) {
  if (!needsUpdate(lane)) {
    return;
  }
  const PadValues& pad = *bank.padGroup[lane];
  bank.settingsSeen[lane] = pad.version();
  const std::int32_t cents = centsOf(pad);
  if (cents != bank.pitchCents[lane]) {
    bank.pitchCents[lane] = cents;
    bank.pitchDirty[lane] = true;
  }
  const std::int32_t bus = pad[PadParameter::fxSend];
  if (bus != bank.fxSend[lane]) {
    sendTo(lane, bus);
  }
  updateGains(lane, pad);
  updatePitch(lane);
}

void VoiceStart::updateGains(std::size_t lane, const PadValues& pad) {
  const std::int32_t lowBoost = pad[PadParameter::lowBoost];
  if (lowBoost != bank.lowBoost[lane]) {
    bank.lowBoost[lane] = lowBoost;
    ramps.setTarget(bank.rampOf(lane, LaneRamp::lowBoost), lowBoostGain(lowBoost));
  }
  const std::int32_t level = pad[PadParameter::level];
  if (level != bank.level[lane]) {
    bank.level[lane] = level;
    const std::int32_t ramp = bank.rampOf(lane, LaneRamp::level);
    ramps.setRate(ramp, RampBank::kMoveRate);
    ramps.setTarget(ramp, levelGain(level, bank.velocity[lane], bank.muted[lane]));
  }
  if (!bank.envelopeFinished[lane]) {
    bank.egTime[lane] = pad[PadParameter::egTime];
  }
  const std::int32_t pan = pad[PadParameter::pan];
  if (pan != bank.pan[lane]) {
    bank.pan[lane] = pan;
    ramps.setTarget(bank.rampOf(lane, LaneRamp::pan), panGain(pan));
  }
}

}  // namespace tesh::bramel::plugin::sivray
