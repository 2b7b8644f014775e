// Plans for how many frames the voices run unchanged, and the kernel's data for these frames.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "core/RealTime.h"
#include "engine/voice/AmpEnvelope.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"

namespace tesh::bramel::plugin::sivray {

/// A plan tells for how many frames no voice starts, ends or changes its envelope's level. While nothing moves or
/// fades, it holds for several runs; otherwise for one. Waves and envelopes are advanced only once, at the plan's end,
/// because that costs less; until then the plan counts the rendered frames. Audio thread.
class RunPlan {
 public:
  /// Plans for all lanes of `bank`. `samples` is the start of all sample memory.
  RunPlan(VoiceBank& bank, RampBank& ramps, const AmpEnvelope& envelope, const std::int16_t* samples);

  bool holds() const { return left > 0; }
  void drop() { left = 0; }

  /// Plans a run of the first `voices` lanes, of at most `frames` frames unless the plan holds for several runs.
  void make(int frames, std::size_t voices) SIVRAY_NONBLOCKING;

  /// The number of voices of the last run.
  std::size_t voices() const { return static_cast<std::size_t>(run.voices); }

  /// The frames for which the plan still holds, at most `most`.
  int framesOf(int most) const { return std::min(most, left); }

  /// The run of `frames` frames, at most `framesOf`, of the first `voiceCount` lanes, into `output` and `taps`; see
  /// VoiceRun.
  const VoiceRun& runOf(int frames, int voiceCount, BusWords output, std::int16_t* taps) SIVRAY_NONBLOCKING {
    run.frames = frames;
    run.voices = voiceCount;
    run.output = output;
    run.taps = taps;
    return run;
  }

  /// Counts `frames` rendered frames, which may end the plan.
  void count(int frames) {
    unsettled += frames;
    left = lasts ? left - frames : 0;
  }

  /// Returns the frames counted since the last call.
  int takeUnsettled() { return std::exchange(unsettled, 0); }

  /// Step of lane `lane` in the planned run, in Q12 frames per sample, signed.
  std::int32_t stepOf(std::size_t lane) const { return run.step[lane]; }

  /// Whether the planned run sends anything to the effect.
  bool feedsEffect() const { return run.fed != Buses::dry; }

 private:
  unsigned movingRamps() const;
  Buses fedBuses() const;
  bool endsNext(std::size_t lane) const;
  int framesToWaveEnd(std::size_t lane, int frames) const;

  const VoiceBank& bank;
  const RampBank& ramps;
  const AmpEnvelope& envelope;
  VoiceRun run;
  int left = 0;        ///< Frames until the next event, as far as it was planned; 0 without a plan.
  bool lasts = false;  ///< Nothing moves or fades, so that the plan holds for several runs.
  int unsettled = 0;
};

}  // namespace tesh::bramel::plugin::sivray
