// The eight voices: their ramps, and the runs between events in which the kernel renders them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "engine/samples/PadWaves.h"
#include "engine/voice/AmpEnvelope.h"
#include "engine/voice/PadTaps.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/RunPlan.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceStart.h"

namespace tesh::bramel::plugin::sivray {

class DrumCore;

/// Renders in runs. Within a run no voice starts, ends or changes its envelope's level, so the kernel only computes
/// samples; the event that ends a run is handled before the next one. Audio thread, except construction.
class VoicePool {
 public:
  /// Allocates and binds the ramps of all lanes.
  VoicePool(DrumCore& core, const VoiceKernel& voiceKernel);

  VoiceBank& lanes() { return bank; }

  /// Must be called before any change to a lane between two renders that may end, start or move a voice: advances the
  /// lanes' waves and envelopes to the frames that are already rendered.
  void prepareChange() SIVRAY_NONBLOCKING {
    settle();
    plan.drop();
  }

  /// Starts the lane's voice at the next sample. The sound that it plays now ends there.
  void trigger(std::size_t lane, int velocity) SIVRAY_NONBLOCKING;

  /// Rebinds the lane's ramps to its fields and stops them there; only the fade's ramp keeps moving.
  void rebindRamps(std::size_t lane) SIVRAY_NONBLOCKING;

  /// Renders `frames` frames of the first `voices` lanes, and of each pad's own out unless `pads` is null; then at most
  /// PadTaps::kFrames frames. Returns false if the effect bus is silent.
  bool render(BusWords output, int frames, int voices, const PadOuts* pads = nullptr) SIVRAY_NONBLOCKING;

  /// Like `render` with no lanes, without writing the silent output: only steps the ramps that still move.
  void skip(int frames) SIVRAY_NONBLOCKING;

 private:
  void makeRamps(std::size_t lane);
  void fadeOut(std::size_t lane) SIVRAY_NONBLOCKING;
  void startPending(std::size_t voices) SIVRAY_NONBLOCKING;
  void takeSettings(bool startsToo, std::size_t voices) SIVRAY_NONBLOCKING;

  void readSamples(int frames, std::size_t voices);
  void settle() SIVRAY_NONBLOCKING;
  void finishRun(int frames, std::size_t voices);
  void advanceWave(std::size_t lane, int frames);
  void checkEnd(std::size_t lane);

  RampBank& ramps;
  VoiceBank& bank;
  PadWaves& waves;
  const VoiceKernel& kernel;
  AmpEnvelope envelope;
  VoiceStart voiceStart;
  RunPlan plan;
  PadTaps taps;
  bool triggered = false;  ///< A voice waits for its start.
};

}  // namespace tesh::bramel::plugin::sivray
