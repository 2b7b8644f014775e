// The memory of the engine: the samples of all pads, the steps that load them, the ramps, and the voices.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "engine/samples/PadWaves.h"
#include "engine/samples/PcmFile.h"
#include "engine/samples/WaveChange.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"

namespace tesh::bramel::plugin::sivray {

class VoiceAllocator;
class VoicePool;

/// Owns the objects that pads and voices share. Allocates only in its constructor and in `makeVoices`.
class DrumCore {
 public:
  /// Allocates memory for `padCount` pads with `slotFrames` frames each. `file` must outlive the core.
  DrumCore(PcmFile& file, int padCount, std::size_t slotFrames);
  ~DrumCore();
  DrumCore(const DrumCore&) = delete;
  DrumCore& operator=(const DrumCore&) = delete;

  /// The group whose parameter n is the wave of pad n. Setting it starts to read the wave into the pad's slot.
  IParameter& waveChange() { return throughBack; }
  PadWaves& waves() { return padWaves; }
  WaveDatabase& database() { return pcmFile.database(); }
  RampBank& rampBank() { return ramps; }
  VoiceBank& voiceBank() { return bank; }

  /// Makes the voices, all free, and passes them to the allocator. Must be called once, after every pad has its
  /// settings. Without a `kernel`, they use the fastest that the processor can run.
  void makeVoices(VoiceAllocator& allocator);
  void makeVoices(VoiceAllocator& allocator, const VoiceKernel& kernel);

 private:
  PcmFile& pcmFile;
  PadWaves padWaves;
  RampBank ramps;
  VoiceBank bank;
  PrepareWaveChange prepareWaveChange;
  PCMLoadTask loadTask;
  PCMLoadAck loadAck;
  ThroughBack throughBack;
  std::unique_ptr<VoicePool> voicePool;
};

}  // namespace tesh::bramel::plugin::sivray
