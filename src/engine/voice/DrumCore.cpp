// Constructs the engine's memory and voices.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/DrumCore.h"

#include "engine/voice/VoiceAllocator.h"
#include "engine/voice/VoicePool.h"

namespace tesh::bramel::plugin::sivray {

DrumCore::DrumCore(PcmFile& file, int padCount, std::size_t slotFrames)
    : pcmFile(file),
      padWaves(file, static_cast<std::size_t>(padCount), slotFrames),
      prepareWaveChange(padWaves),
      loadTask(padWaves, bank.slotBase, bank.padIndex),
      loadAck(padWaves),
      throughBack(prepareWaveChange, loadTask, loadAck) {}

DrumCore::~DrumCore() = default;

void DrumCore::makeVoices(VoiceAllocator& allocator) { makeVoices(allocator, bestVoiceKernel()); }

void DrumCore::makeVoices(VoiceAllocator& allocator, const VoiceKernel& kernel) {
  voicePool = std::make_unique<VoicePool>(*this, kernel);
  allocator.setVoices(voicePool.get());
}

}  // namespace tesh::bramel::plugin::sivray
