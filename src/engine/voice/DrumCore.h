// The memory of the engine: the sample memory with the steps that refill it, the ramps and the voices.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <memory>

#include "engine/samples/PcmFile.h"
#include "engine/samples/PcmPool.h"
#include "engine/samples/WaveChange.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"

namespace tesh::bramel::plugin::sivray {

class VoiceAllocator;
class VoicePool;

class DrumCore {
 public:
  /// Memory for `padCount` pads of `slotFrames` frames each. `file` must outlive the core.
  DrumCore(PcmFile& file, int padCount, std::size_t slotFrames);
  ~DrumCore();
  DrumCore(const DrumCore&) = delete;
  DrumCore& operator=(const DrumCore&) = delete;

  /// The group whose parameter n is the wave of pad n: setting it reads the wave into the pad's slot.
  IParameter& waveChange() { return throughBack; }
  WaveDatabase& database() { return pcmFile.database(); }
  PcmPool& pool() { return pcmPool; }
  RampBank& rampBank() { return ramps; }
  VoiceBank& voiceBank() { return bank; }

  /// Makes the voices, all of them free, and hands them to the allocator. Once, after every pad has its settings. The
  /// kernel is the fastest that the processor can run unless one is given.
  void makeVoices(VoiceAllocator& allocator);
  void makeVoices(VoiceAllocator& allocator, const VoiceKernel& kernel);

 private:
  PcmFile& pcmFile;
  PcmPool pcmPool;
  PrepareWaveChange prepareWaveChange;
  PCMLoadTask loadTask;
  PCMLoadAck loadAck;
  ThroughBack throughBack;
  RampBank ramps;
  VoiceBank bank;
  std::unique_ptr<VoicePool> voicePool;
};

}  // namespace tesh::bramel::plugin::sivray
