// The ramps of the lanes, and how a render is cut into runs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoicePool.h"

#include <algorithm>
#include <array>

#include "core/FixedPoint.h"
#include "engine/voice/DrumCore.h"
#include "engine/voice/VoiceTables.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr int kControlPeriod = 64;  ///< Samples between two control updates.
constexpr int kLongestPlan = 4096;  ///< Frames that a plan looks ahead.

/// Rates in the order of LaneRamp. The level's ramp gets its rate when the level first changes.
constexpr std::array<std::int32_t, kRampsPerLane> kRates{
    RampBank::kMoveRate, 0, RampBank::kMoveRate, RampBank::kMoveRate, RampBank::kEndFadeRate, RampBank::kGateRate,
    RampBank::kGateRate};

}  // namespace

VoicePool::VoicePool(DrumCore& core, const VoiceKernel& voiceKernel)
    : ramps(core.rampBank()),
      bank(core.voiceBank()),
      waves(core.waves()),
      kernel(voiceKernel),
      envelope(bank, ramps),
      voiceStart(bank, ramps, waves.pool(), core.database(), envelope) {
  voiceTables();
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    bank.slotBase[lane] = waves.pool().frameOf(waves.pool().silence());
    makeRamps(lane);
  }
}

void VoicePool::makeRamps(std::size_t lane) {
  for (std::size_t ramp = 0; ramp < kRampsPerLane; ++ramp) {
    bank.ramps[lane][ramp] = ramps.allocate();
    ramps.setRate(bank.ramps[lane][ramp], kRates[ramp]);
  }
  ramps.setNow(bank.rampOf(lane, LaneRamp::fade), cofu::core::kFullScale);
  rebindRamps(lane);
}

void VoicePool::rebindRamps(std::size_t lane) {
  for (std::size_t ramp = 0; ramp < kRampsPerLane; ++ramp) {
    const auto name = static_cast<LaneRamp>(ramp);
    if (name == LaneRamp::fade) {
      ramps.bindKeepingTarget(bank.rampOf(lane, name), bank.destinationOf(lane, name));
    } else {
      ramps.bind(bank.rampOf(lane, name), bank.destinationOf(lane, name));
    }
  }
}

void VoicePool::trigger(std::size_t lane, int velocity) {
  bank.triggerVelocity[lane] = velocity;
  bank.triggerPending[lane] = true;
  triggered = true;
  if (bank.state[lane] != VoiceState::sounding) {
    return;
  }
  ramps.setRate(bank.rampOf(lane, LaneRamp::fade), RampBank::kMoveRate);
  fadeOut(lane);
  bank.state[lane] = VoiceState::retriggered;
}

void VoicePool::fadeOut(std::size_t lane) {
  const std::int32_t fade = bank.rampOf(lane, LaneRamp::fade);
  ramps.setNow(fade, cofu::core::kFullScale);
  ramps.setTarget(fade, 0);
  bank.fadeEnabled[lane] = -1;
  bank.active[lane] = false;
}

bool VoicePool::render(std::int32_t* output, int frames, int voiceCount) {
  if (voiceCount == 0) {
    std::fill_n(output, static_cast<std::size_t>(frames) * 4, 0);
    skip(frames);
    return false;
  }
  bool feedsEffect = false;
  const auto voices = static_cast<std::size_t>(voiceCount);
  VoiceRun run;
  run.bank = &bank;
  run.ramps = &ramps;
  run.samples = waves.pool().base();
  run.step = runStep.data();
  run.watched = runWatched.data();
  run.voices = voiceCount;
  for (int frame = 0; frame < frames;) {
    if (ramps.activeCount() > 0) {
      kernel.tick(ramps);
    }
    const int period = kControlPeriod - frame % kControlPeriod;
    if (period == kControlPeriod) {
      takeSettings(frame == 0, voices);
    }
    const int most = std::min(frames - frame, period);
    if (planned == 0) {
      planRun(most, voices);
    }
    run.frames = std::min(most, planned);
    if (waves.isReading()) {
      readSamples(run.frames, voices);
    }
    run.fading = runFading;
    run.moving = runMoving;
    run.fed = runFed;
    feedsEffect |= runFed != Buses::dry;
    run.output = output + static_cast<std::ptrdiff_t>(frame) * 4;
    const int done = kernel.run(run);
    unsettled += done;
    frame += done;
    planned = planLasts ? planned - done : 0;
    if (planned == 0 || frame == frames) {
      settle(voices);  // before the next tick, because it may start a ramp
    }
  }
  return feedsEffect;
}

void VoicePool::takeSettings(bool startsToo, std::size_t voices) {
  bool changes = startsToo && triggered;
  for (std::size_t lane = 0; lane < voices; ++lane) {
    changes |= voiceStart.needsUpdate(lane);
  }
  if (!changes) {
    return;
  }
  settle(voices);
  planned = 0;
  if (startsToo) {
    startPending(voices);
  }
  for (std::size_t lane = 0; lane < voices; ++lane) {
    voiceStart.update(lane);
  }
}

void VoicePool::settle(std::size_t voices) {
  if (unsettled > 0) {
    finishRun(unsettled, voices);
    unsettled = 0;
  }
}

unsigned VoicePool::movingRamps() const {
  unsigned moving = 0;
  for (std::int32_t position = 0; position < ramps.activeCount(); ++position) {
    moving |= 1U << (static_cast<unsigned>(ramps.movingSlot(position)) % kRampsPerLane);  // as makeRamps numbers them
  }
  return moving;
}

/// The buses that lanes send to, or may send to while ramps open them.
Buses VoicePool::fedBuses() const {
  std::int32_t dry = (runMoving & rampBit(LaneRamp::dry)) != 0 ? -1 : 0;
  std::int32_t effect = (runMoving & rampBit(LaneRamp::effect)) != 0 ? -1 : 0;
  const std::int32_t levelMoves = (runMoving & rampBit(LaneRamp::level)) != 0 ? -1 : 0;
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    const std::int32_t audible = bank.levelGain[lane] != 0 ? -1 : levelMoves;
    dry |= audible & bank.gainDry[lane];
    effect |= audible & bank.gainEffect[lane];
  }
  return effect == 0 ? Buses::dry : dry == 0 ? Buses::effect : Buses::both;
}

void VoicePool::skip(int frames) {
  for (int frame = 0; frame < frames && ramps.activeCount() > 0; ++frame) {
    kernel.tick(ramps);
  }
}

void VoicePool::startPending(std::size_t voices) {
  for (std::size_t lane = 0; lane < voices; ++lane) {
    if (bank.triggerPending[lane]) {
      voiceStart.start(lane);
      bank.triggerPending[lane] = false;
    }
  }
  triggered = std::find(bank.triggerPending.begin(), bank.triggerPending.end(), true) != bank.triggerPending.end();
}

void VoicePool::planRun(int frames, std::size_t voices) {
  runFading = false;
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    runStep[lane] = bank.remainingQ12[lane] > 0 ? bank.stepSignedQ12[lane] : 0;
    const bool closing = lane < voices && !bank.active[lane] && bank.state[lane] != VoiceState::free;
    runWatched[lane] = closing ? -1 : 0;
    runFading |= closing || bank.fadeEnabled[lane] != 0;
  }
  runMoving = movingRamps();
  runFed = fedBuses();
  planLasts = ramps.activeCount() == 0 && !runFading;
  planned = planLasts ? kLongestPlan : frames;
  for (std::size_t lane = 0; lane < voices; ++lane) {
    planned = endsNext(lane) ? 1 : framesToWaveEnd(lane, planned);
    planned = envelope.framesToStep(lane, planned);
  }
}

/// Reads the missing frames that this run will play, and one more for interpolation.
void VoicePool::readSamples(int frames, std::size_t voices) {
  for (std::size_t lane = 0; lane < voices; ++lane) {
    const std::int64_t start = bank.positionQ12[lane];
    const std::int64_t end = start + std::int64_t{runStep[lane]} * (frames - 1);
    const auto [first, last] = std::minmax(start, end);
    waves.need(bank.slotBase[lane], static_cast<std::size_t>(std::max<std::int64_t>(first, 0) >> 12),
               static_cast<std::size_t>(std::max<std::int64_t>(last, 0) >> 12) + 1);
  }
}

bool VoicePool::endsNext(std::size_t lane) const {
  if (bank.meterRestart[lane] != 0 && bank.meterEnabled[lane] == 0) {
    return true;  // a meter that is off still takes the first sample after a restart
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

void VoicePool::finishRun(int frames, std::size_t voices) {
  for (std::size_t lane = 0; lane < voices; ++lane) {
    advanceWave(lane, frames);
    envelope.advance(lane, frames);
  }
  for (std::size_t lane = 0; lane < voices; ++lane) {
    checkEnd(lane);
  }
}

void VoicePool::advanceWave(std::size_t lane, int frames) {
  if (bank.remainingQ12[lane] < 1) {
    return;
  }
  bank.remainingQ12[lane] -= std::int64_t{bank.stepMagnitudeQ12[lane]} * frames;
  if (bank.remainingQ12[lane] >= 1 && bank.positionQ12[lane] >= 0) {
    return;
  }
  bank.remainingQ12[lane] = 0;
  bank.positionQ12[lane] = bank.reversed[lane] ? 0 : lastFrameQ12(bank.length[lane]);
  bank.stepSignedQ12[lane] = 0;
  bank.stepMagnitudeQ12[lane] = 0;
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
  fadeOut(lane);
  bank.pitchIncrementQ16[lane] = 0;
}

}  // namespace tesh::bramel::plugin::sivray
