// Sets up the lanes' ramps, and cuts a render into runs.
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
      voiceStart(bank, ramps, waves.pool(), core.database(), envelope),
      plan(bank, ramps, envelope, waves.pool().base()) {
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

bool VoicePool::render(BusWords output, int frames, int voiceCount, const PadOuts* pads) {
  if (voiceCount == 0) {
    std::fill_n(output.dry, 2 * frames, std::int16_t{0});
    std::fill_n(output.effect, 2 * frames, std::int16_t{0});
    if (pads != nullptr) {
      PadTaps::clear(*pads, frames);
    }
    skip(frames);
    return false;
  }
  bool feedsEffect = false;
  const auto voices = static_cast<std::size_t>(voiceCount);
  for (int frame = 0; frame < frames;) {
    if (ramps.activeCount() > 0) {
      kernel.tick(ramps);
    }
    const int period = kControlPeriod - frame % kControlPeriod;
    if (period == kControlPeriod) {
      takeSettings(frame == 0, voices);
    }
    const int most = std::min(frames - frame, period);
    if (!plan.holds()) {
      plan.make(most, voices);
    }
    const int planned = plan.framesOf(most);
    if (waves.isReading()) {
      readSamples(planned, voices);
    }
    feedsEffect |= plan.feedsEffect();
    const int done =
        kernel.run(plan.runOf(planned, voiceCount, output.from(frame), pads == nullptr ? nullptr : taps.at(frame)));
    plan.count(done);
    frame += done;
    if (!plan.holds()) {
      settle();  // Before the next tick, because it may start a ramp.
    }
  }
  if (pads != nullptr) {  // No lane changes its pad during a render.
    taps.spread(std::span(bank.pad).first(voices), frames, *pads);
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
  prepareChange();
  if (startsToo) {
    startPending(voices);
  }
  for (std::size_t lane = 0; lane < voices; ++lane) {
    voiceStart.update(lane);
  }
}

void VoicePool::settle() {
  if (const int frames = plan.takeUnsettled(); frames > 0) {
    finishRun(frames, plan.voices());
  }
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

/// Reads the missing frames that this run plays, and one more for the interpolation.
void VoicePool::readSamples(int frames, std::size_t voices) {
  for (std::size_t lane = 0; lane < voices; ++lane) {
    const std::int64_t start = bank.positionQ12[lane];
    const std::int64_t end = start + std::int64_t{plan.stepOf(lane)} * (frames - 1);
    const auto [first, last] = std::minmax(start, end);
    waves.need(bank.slotBase[lane], static_cast<std::size_t>(std::max<std::int64_t>(first, 0) >> 12),
               static_cast<std::size_t>(std::max<std::int64_t>(last, 0) >> 12) + 1);
  }
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
