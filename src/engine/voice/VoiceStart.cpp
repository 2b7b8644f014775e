// What a voice takes from its pad: everything when it starts, some of it again every 64 samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/PadValues.h"
#include "engine/voice/VoicePool.h"
#include "engine/voice/VoiceTables.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::int32_t kLevelRate = -32511;
constexpr std::int32_t kUnity = 32767;

std::int32_t centsOf(const PadValues& pad) {
  return pad[PadParameter::pitch] * 100 - 100 + pad[PadParameter::pitchFine];
}

std::int32_t lowBoostGain(std::int32_t amount) {
  return voiceTables().lowBoost[static_cast<std::size_t>(amount & 127)] >> 8;
}

/// The envelope's gain at a level index of 0 to 127.
constexpr std::int32_t envelopeGain(std::int32_t index) { return (index * index * 520) >> 8; }

}  // namespace

void VoicePool::startVoice(std::size_t lane) {
  const PadValues& pad = *bank.padGroup[lane];
  startWave(lane);
  sendTo(lane, pad[PadParameter::fxSend]);
  bank.pitchCents[lane] = centsOf(pad);
  updatePitch(lane);
  startTone(lane);
  startEnvelope(lane);
  startLevels(lane);
  bank.active[lane] = true;
  bank.state[lane] = VoiceState::sounding;
  bank.live[lane] = true;
  bank.fadeEnabled[lane] = 0;
}

void VoicePool::startWave(std::size_t lane) {
  const PadValues& pad = *bank.padGroup[lane];
  bank.pitchDirty[lane] = true;
  bank.reversed[lane] = pad[PadParameter::reverse] != 0;
  bank.waveRate[lane] = database.lookup(pad[PadParameter::wave]).sampleRate;
  bank.ratio[lane] = rateRatio(bank.waveRate[lane]);
  const PcmSlot& slot = pool.slot(static_cast<std::size_t>(bank.padIndex[lane]));
  bank.slotBase[lane] = pool.frameOf(slot.data);
  bank.length[lane] = static_cast<std::uint32_t>(slot.frames);
  bank.remainingQ12[lane] = static_cast<std::int64_t>(slot.frames) << 12;
  const bool fromEnd = bank.reversed[lane] && slot.frames != 0;
  bank.positionQ12[lane] = fromEnd ? static_cast<std::int32_t>((slot.frames - 1) << 12) : 0;
}

void VoicePool::sendTo(std::size_t lane, std::int32_t bus) {
  bank.fxSend[lane] = bus;
  ramps.setTarget(rampOf(lane, LaneRamp::dry), bus == 0 ? kUnity : 0);
  ramps.setTarget(rampOf(lane, LaneRamp::effect), bus == 1 ? kUnity : 0);
}

void VoicePool::updatePitch(std::size_t lane) {
  if (bank.pitchDirty[lane]) {
    bank.pitchIncrementQ16[lane] = pitchIncrement(bank.pitchCents[lane], bank.ratio[lane]);
    bank.pitchDirty[lane] = false;
  }
  const auto step = static_cast<std::int32_t>(bank.pitchIncrementQ16[lane] >> 4);
  bank.stepMagnitudeQ12[lane] = step;
  bank.stepSignedQ12[lane] = bank.reversed[lane] ? -step : step;
}

void VoicePool::startTone(std::size_t lane) {
  const PadValues& pad = *bank.padGroup[lane];
  bank.lowBoost[lane] = pad[PadParameter::lowBoost];
  bank.stateLeft[lane] = 0;
  bank.stateRight[lane] = 0;
  ramps.setNow(rampOf(lane, LaneRamp::lowBoost), lowBoostGain(bank.lowBoost[lane]));
  bank.punchStart[lane] = (pad[PadParameter::punch] * 256) - 1;
  bank.punchCurrent[lane] = bank.punchStart[lane];
}

void VoicePool::startEnvelope(std::size_t lane) {
  const PadValues& pad = *bank.padGroup[lane];
  bank.egTime[lane] = pad[PadParameter::egTime];
  bank.levelIndex[lane] = 127;
  ramps.setNow(rampOf(lane, LaneRamp::envelope), envelopeGain(127));
  bank.lengthAtEngineRate[lane] = lengthAtEngineRate(bank.length[lane], bank.waveRate[lane]);
  const std::int32_t decay = decaySamples(bank.lengthAtEngineRate[lane], bank.egTime[lane]);
  bank.envelopeSpeed[lane] = 127.0F / static_cast<float>(decay);
  bank.envelopeCounter[lane] = 0;
  bank.envelopeFinished[lane] = false;
  bank.gateMode[lane] = pad[PadParameter::egMode] != 0;
  bank.phase[lane] = EnvelopePhase::running;
}

void VoicePool::startLevels(std::size_t lane) {
  const PadValues& pad = *bank.padGroup[lane];
  bank.velocity[lane] = bank.triggerVelocity[lane];
  bank.muted[lane] = pad[PadParameter::mute] == 1;
  bank.level[lane] = pad[PadParameter::level];
  ramps.setNow(rampOf(lane, LaneRamp::level), levelValue(bank.level[lane], bank.velocity[lane], bank.muted[lane]) >> 8);
  bank.pan[lane] = pad[PadParameter::pan];
  ramps.setNow(rampOf(lane, LaneRamp::pan), panValue(bank.pan[lane]) >> 8);
  bank.meterEnabled[lane] = -1;
}

void VoicePool::controlUpdate(std::size_t lane) {
  if (!bank.live[lane] || bank.padGroup[lane] == nullptr || bank.state[lane] == VoiceState::retriggered) {
    return;
  }
  const PadValues& pad = *bank.padGroup[lane];
  const std::int32_t cents = centsOf(pad);
  if (cents != bank.pitchCents[lane]) {
    bank.pitchCents[lane] = cents;
    bank.pitchDirty[lane] = true;
  }
  const std::int32_t bus = pad[PadParameter::fxSend];
  if (bus != bank.fxSend[lane]) {
    sendTo(lane, bus);
  }
  updateGains(lane);
  updatePitch(lane);
}

void VoicePool::updateGains(std::size_t lane) {
  const PadValues& pad = *bank.padGroup[lane];
  const std::int32_t lowBoost = pad[PadParameter::lowBoost];
  if (lowBoost != bank.lowBoost[lane]) {
    bank.lowBoost[lane] = lowBoost;
    ramps.setTarget(rampOf(lane, LaneRamp::lowBoost), lowBoostGain(lowBoost));
  }
  const std::int32_t level = pad[PadParameter::level];
  if (level != bank.level[lane]) {
    bank.level[lane] = level;
    const std::int32_t ramp = rampOf(lane, LaneRamp::level);
    ramps.setRate(ramp, kLevelRate);
    ramps.setTarget(ramp, levelValue(level, bank.velocity[lane], bank.muted[lane]) >> 8);
  }
  if (!bank.envelopeFinished[lane]) {
    bank.egTime[lane] = pad[PadParameter::egTime];
  }
  const std::int32_t pan = pad[PadParameter::pan];
  if (pan != bank.pan[lane]) {
    bank.pan[lane] = pan;
    ramps.setTarget(rampOf(lane, LaneRamp::pan), panValue(pan) >> 8);
  }
}

}  // namespace tesh::bramel::plugin::sivray
