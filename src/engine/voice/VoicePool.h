// The eight voices: what happens to each of them at a start, at a control update, and between two stretches of samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "engine/samples/PcmPool.h"
#include "engine/samples/WaveDatabase.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"

namespace tesh::bramel::plugin::sivray {

class DrumCore;

/// Renders by runs: stretches of samples between two events, in which the kernel needs to look at nothing. What ends a
/// run is dealt with between its last sample and the next. Audio thread, but for construction.
class VoicePool {
 public:
  /// Allocates and binds the ramps of all lanes.
  VoicePool(DrumCore& core, const VoiceKernel& voiceKernel);

  VoiceBank& lanes() { return bank; }

  /// Makes `lane` start at the next sample; a voice that sounds is cut.
  void trigger(std::size_t lane, int velocity) SIVRAY_NONBLOCKING;

  /// Silences a lane's fields. The ramps stay as they are.
  void clear(std::size_t lane) SIVRAY_NONBLOCKING;

  /// Lets the lane's ramps rest at its fields' values, but for the fade's, which goes on.
  void rebindRamps(std::size_t lane) SIVRAY_NONBLOCKING;

  /// Renders `frames` frames of four interleaved words with the first `voices` lanes.
  void render(std::int32_t* output, int frames, int voices) SIVRAY_NONBLOCKING;

 private:
  void makeRamps(std::size_t lane);
  std::int32_t rampOf(std::size_t lane, LaneRamp ramp) const SIVRAY_NONBLOCKING;
  std::int32_t* fieldOf(std::size_t lane, LaneRamp ramp);

  void startVoice(std::size_t lane) SIVRAY_NONBLOCKING;
  void startPending(std::size_t voices) SIVRAY_NONBLOCKING;
  void startWave(std::size_t lane);
  void startTone(std::size_t lane);
  void startEnvelope(std::size_t lane);
  void startLevels(std::size_t lane);
  void sendTo(std::size_t lane, std::int32_t bus) SIVRAY_NONBLOCKING;
  void controlUpdate(std::size_t lane) SIVRAY_NONBLOCKING;
  void updateGains(std::size_t lane) SIVRAY_NONBLOCKING;
  void updatePitch(std::size_t lane) SIVRAY_NONBLOCKING;

  int planRun(int frames, std::size_t voices);
  int framesToWaveEnd(std::size_t lane, int frames) const;
  int framesToEnvelopeStep(std::size_t lane, int frames) const;
  bool endsNext(std::size_t lane) const;
  void finishRun(int frames, std::size_t voices);
  void advanceWave(std::size_t lane, int frames);
  void advanceEnvelope(std::size_t lane, int frames);
  void checkEnd(std::size_t lane);
  void renderSilence(std::int32_t* output, int frames);

  RampBank& ramps;
  VoiceBank& bank;
  PcmPool& pool;
  WaveDatabase& database;
  const VoiceKernel& kernel;
  LaneWords runStep{};
  LaneWords runWatched{};
  bool runFading = false;
};

}  // namespace tesh::bramel::plugin::sivray
