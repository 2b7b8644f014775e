// Construction of the engine's memory and voices.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/DrumCore.h"

#include <algorithm>

#include "engine/voice/VoiceAllocator.h"
#include "engine/voice/VoicePool.h"

namespace tesh::bramel::plugin::sivray {

DrumCore::DrumCore(PcmFile& file, int padCount, std::size_t slotFrames)
    : pcmFile(file),
      pcmPool(static_cast<std::size_t>(padCount), slotFrames),
      prepareWaveChange(pcmPool),
      loadTask(pcmPool, pcmFile, this),
      loadAck(pcmPool),
      throughBack(prepareWaveChange, loadTask, loadAck) {}

DrumCore::~DrumCore() = default;

/// Voices read on at their positions, as they would if the wave had been replaced in place.
void DrumCore::slotMoved(std::int32_t from, std::int32_t to) {
  std::replace(bank.slotBase.begin(), bank.slotBase.end(), from, to);
}

void DrumCore::makeVoices(VoiceAllocator& allocator) { makeVoices(allocator, bestVoiceKernel()); }

void DrumCore::makeVoices(VoiceAllocator& allocator, const VoiceKernel& kernel) {
  voicePool = std::make_unique<VoicePool>(*this, kernel);
  allocator.setVoices(voicePool.get());
}

}  // namespace tesh::bramel::plugin::sivray
