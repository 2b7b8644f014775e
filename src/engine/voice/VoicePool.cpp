// The ramps of the lanes, and the division of a render into runs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoicePool.h"

#include <algorithm>
#include <limits>

#include "engine/voice/DrumCore.h"
#include "engine/voice/VoiceTables.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::int32_t kOrdinaryRate = -32511;
constexpr std::int32_t kEndFadeRate = -32703;
constexpr std::int32_t kGateRate = -256;

constexpr int kControlPeriod = 64;
constexpr std::int32_t kFadeClosed = 181;  // its square is below 1.0 / 32768
constexpr std::int32_t kLastLevelIndex = 127;
constexpr std::int32_t kEgTimeForever = 127;

/// The envelope's level index after `counter` running samples: single precision, truncated, never below 0.
std::int32_t levelIndexAt(std::int32_t counter, float speed) {
  const float steps = static_cast<float>(counter) * speed;
  return steps >= static_cast<float>(kLastLevelIndex) ? 0 : kLastLevelIndex - static_cast<std::int32_t>(steps);
}

/// The counter after `frames` more samples; it stops at its end, which is thirteen hours away.
std::int32_t countedOn(std::int32_t counter, int frames) {
  return counter > std::numeric_limits<std::int32_t>::max() - frames ? std::numeric_limits<std::int32_t>::max()
                                                                     : counter + frames;
}

bool envelopeRuns(const VoiceBank& bank, std::size_t lane) {
  return bank.gateMode[lane] ? bank.phase[lane] == EnvelopePhase::released : bank.egTime[lane] != kEgTimeForever;
}

std::int32_t lastFrameQ12(std::uint32_t length) {
  return length == 0 ? 0 : static_cast<std::int32_t>((length - 1) << 12);
}

}  // namespace

VoicePool::VoicePool(DrumCore& core, const VoiceKernel& voiceKernel)
    : ramps(core.rampBank()),
      bank(core.voiceBank()),
      pool(core.pool()),
      database(core.database()),
      kernel(voiceKernel) {
  voiceTables();
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    bank.slotBase[lane] = pool.frameOf(pool.silence());
    makeRamps(lane);
  }
}

std::int32_t VoicePool::rampOf(std::size_t lane, LaneRamp ramp) const {
  return bank.ramps[lane][static_cast<std::size_t>(ramp)];
}

std::int32_t* VoicePool::fieldOf(std::size_t lane, LaneRamp ramp) {
  switch (ramp) {
    case LaneRamp::lowBoost:
      return &bank.lowBoostGain[lane];
    case LaneRamp::level:
      return &bank.levelGain[lane];
    case LaneRamp::pan:
      return &bank.rightGain[lane];
    case LaneRamp::envelope:
      return &bank.envelopeGain[lane];
    case LaneRamp::fade:
      return &bank.fadeAmp[lane];
    case LaneRamp::dry:
      return &bank.gainDry[lane];
    case LaneRamp::effect:
      break;
  }
  return &bank.gainEffect[lane];
}

void VoicePool::makeRamps(std::size_t lane) {
  // The level's ramp has no rate until the level is first changed.
  constexpr std::array<std::int32_t, kRampsPerLane> kRates{kOrdinaryRate, 0,         kOrdinaryRate, kOrdinaryRate,
                                                           kEndFadeRate,  kGateRate, kGateRate};
  for (std::size_t ramp = 0; ramp < kRampsPerLane; ++ramp) {
    bank.ramps[lane][ramp] = ramps.allocate();
    ramps.setRate(bank.ramps[lane][ramp], kRates[ramp]);
  }
  ramps.setNow(rampOf(lane, LaneRamp::fade), 32767);
  rebindRamps(lane);
}

void VoicePool::rebindRamps(std::size_t lane) {
  for (std::size_t ramp = 0; ramp < kRampsPerLane; ++ramp) {
    const auto name = static_cast<LaneRamp>(ramp);
    if (name == LaneRamp::fade) {
      ramps.bindKeepingTarget(rampOf(lane, name), fieldOf(lane, name));
    } else {
      ramps.bind(rampOf(lane, name), fieldOf(lane, name));
    }
  }
}

void VoicePool::clear(std::size_t lane) {
  bank.stepMagnitudeQ12[lane] = 0;
  bank.stepSignedQ12[lane] = 0;
  bank.positionQ12[lane] = 0;
  bank.remainingQ12[lane] = 0;
  bank.lowBoost[lane] = 0;
  bank.stateLeft[lane] = 0;
  bank.stateRight[lane] = 0;
  bank.punchCurrent[lane] = 0;
  bank.punchStart[lane] = 32767;
  bank.meterEnabled[lane] = 0;
  bank.meterRestart[lane] = 0;
  bank.peakLeft[lane] = 0;
  bank.peakRight[lane] = 0;
  bank.levelGain[lane] = 0;  // this is what silences a free lane
  bank.pan[lane] = 64;
  bank.fadeAmp[lane] = 0;
  bank.fadeEnabled[lane] = 0;
}

void VoicePool::trigger(std::size_t lane, int velocity) {
  bank.triggerVelocity[lane] = velocity;
  bank.triggerPending[lane] = true;
  if (bank.state[lane] != VoiceState::sounding) {
    return;
  }
  const std::int32_t fade = rampOf(lane, LaneRamp::fade);
  ramps.setRate(fade, kOrdinaryRate);
  ramps.setNow(fade, 32767);
  ramps.setTarget(fade, 0);
  bank.fadeEnabled[lane] = -1;
  bank.active[lane] = false;
  bank.state[lane] = VoiceState::retriggered;
}

void VoicePool::render(std::int32_t* output, int frames, int voiceCount) {
  if (voiceCount == 0) {
    renderSilence(output, frames);
    return;
  }
  const auto voices = static_cast<std::size_t>(voiceCount);
  VoiceRun run;
  run.bank = &bank;
  run.ramps = &ramps;
  run.samples = pool.base();
  run.step = runStep.data();
  run.watched = runWatched.data();
  run.quads = (voiceCount + kLanesPerQuad - 1) / kLanesPerQuad;
  for (int frame = 0; frame < frames;) {
    kernel.tick(ramps);
    if (frame == 0) {
      startPending(voices);
    }
    if (frame % kControlPeriod == 0) {
      for (std::size_t lane = 0; lane < voices; ++lane) {
        controlUpdate(lane);
      }
    }
    run.frames = planRun(std::min(frames - frame, kControlPeriod - frame % kControlPeriod), voices);
    run.fading = runFading;
    run.output = output + static_cast<std::ptrdiff_t>(frame) * 4;
    const int done = kernel.run(run);
    finishRun(done, voices);
    frame += done;
  }
}

void VoicePool::renderSilence(std::int32_t* output, int frames) {
  std::fill_n(output, static_cast<std::size_t>(frames) * 4, 0);
  for (int frame = 0; frame < frames && ramps.activeCount() > 0; ++frame) {
    kernel.tick(ramps);
  }
}

void VoicePool::startPending(std::size_t voices) {
  for (std::size_t lane = 0; lane < voices; ++lane) {
    if (bank.triggerPending[lane]) {
      startVoice(lane);
      bank.triggerPending[lane] = false;
    }
  }
}

int VoicePool::planRun(int frames, std::size_t voices) {
  runFading = false;
  int planned = frames;
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    runStep[lane] = bank.remainingQ12[lane] > 0 ? bank.stepSignedQ12[lane] : 0;
    const bool closing = lane < voices && !bank.active[lane] && bank.state[lane] != VoiceState::free;
    runWatched[lane] = closing ? -1 : 0;
    runFading |= closing || bank.fadeEnabled[lane] != 0;
  }
  for (std::size_t lane = 0; lane < voices; ++lane) {
    planned = endsNext(lane) ? 1 : framesToWaveEnd(lane, planned);
    planned = framesToEnvelopeStep(lane, planned);
  }
  return planned;
}

bool VoicePool::endsNext(std::size_t lane) const {
  if (bank.meterRestart[lane] != 0 && bank.meterEnabled[lane] == 0) {
    return true;  // such a meter takes one sample and then stands
  }
  if (bank.active[lane]) {
    return bank.envelopeFinished[lane] || bank.remainingQ12[lane] < 1;
  }
  return bank.state[lane] != VoiceState::free && bank.fadeAmp[lane] < kFadeClosed;
}

int VoicePool::framesToWaveEnd(std::size_t lane, int frames) const {
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

int VoicePool::framesToEnvelopeStep(std::size_t lane, int frames) const {
  if (!envelopeRuns(bank, lane)) {
    return frames;
  }
  const std::int32_t index = bank.levelIndex[lane];
  if (!bank.envelopeFinished[lane] && index == 0 && bank.envelopeGain[lane] < 1) {
    return 1;
  }
  const std::int32_t counter = bank.envelopeCounter[lane];
  const float speed = bank.envelopeSpeed[lane];
  if (levelIndexAt(countedOn(counter, frames), speed) == index) {
    return frames;
  }
  int first = 1;
  for (int last = frames; first < last;) {
    const int middle = (first + last) / 2;
    if (levelIndexAt(countedOn(counter, middle), speed) == index) {
      first = middle + 1;
    } else {
      last = middle;
    }
  }
  return first;
}

void VoicePool::finishRun(int frames, std::size_t voices) {
  for (std::size_t lane = 0; lane < voices; ++lane) {
    advanceWave(lane, frames);
    advanceEnvelope(lane, frames);
  }
  for (std::size_t lane = 0; lane < voices; ++lane) {
    checkEnd(lane);
  }
}

void VoicePool::advanceWave(std::size_t lane, int frames) {
  if (bank.remainingQ12[lane] < 1) {
    return;
  }
  const std::int64_t position = bank.positionQ12[lane] + std::int64_t{bank.stepSignedQ12[lane]} * frames;
  const std::int64_t remaining = bank.remainingQ12[lane] - std::int64_t{bank.stepMagnitudeQ12[lane]} * frames;
  if (remaining >= 1 && position >= 0) {
    bank.positionQ12[lane] = static_cast<std::int32_t>(position);
    bank.remainingQ12[lane] = remaining;
    return;
  }
  bank.remainingQ12[lane] = 0;
  bank.positionQ12[lane] = bank.reversed[lane] ? 0 : lastFrameQ12(bank.length[lane]);
  bank.stepSignedQ12[lane] = 0;
  bank.stepMagnitudeQ12[lane] = 0;
}

void VoicePool::advanceEnvelope(std::size_t lane, int frames) {
  if (!envelopeRuns(bank, lane)) {
    return;
  }
  bank.envelopeCounter[lane] = countedOn(bank.envelopeCounter[lane], frames);
  const std::int32_t index = levelIndexAt(bank.envelopeCounter[lane], bank.envelopeSpeed[lane]);
  if (index != bank.levelIndex[lane]) {
    bank.levelIndex[lane] = index;
    ramps.setTarget(rampOf(lane, LaneRamp::envelope), (index * index * 520) >> 8);
  }
  if (!bank.envelopeFinished[lane] && index == 0 && bank.envelopeGain[lane] < 1) {
    bank.envelopeFinished[lane] = true;
  }
}

void VoicePool::checkEnd(std::size_t lane) {
  if (!bank.active[lane]) {
    if (bank.fadeAmp[lane] < kFadeClosed) {
      bank.state[lane] = VoiceState::free;
    }
    return;
  }
  if (bank.envelopeFinished[lane]) {
    bank.active[lane] = false;
    return;
  }
  if (bank.remainingQ12[lane] > 0) {
    return;
  }
  bank.active[lane] = false;
  bank.fadeEnabled[lane] = -1;
  ramps.setNow(rampOf(lane, LaneRamp::fade), 32767);
  ramps.setTarget(rampOf(lane, LaneRamp::fade), 0);
  bank.pitchIncrementQ16[lane] = 0;
}

}  // namespace tesh::bramel::plugin::sivray
