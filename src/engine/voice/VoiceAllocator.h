// From notes to voices: which voice a hit takes, and the mix of all voices to the two buses.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "engine/voice/PadValues.h"
#include "engine/voice/VoiceBank.h"

namespace tesh::bramel::plugin::sivray {

class DrumCore;
class VoicePool;

/// The voices in use are always voices 0 to activeVoiceCount() - 1. A pad never has more than one voice. Everything
/// here belongs to the audio thread, but for construction; before the voices have been made notes are ignored.
class VoiceAllocator {
 public:
  static constexpr int kFirstNote = 36;
  static constexpr std::size_t kPadPlaces = 16;

  /// `padTotal` is the number of pads that notes and meters reach, at most 16.
  VoiceAllocator(DrumCore& core, int padTotal);

  /// The settings of a pad, not owned; null makes the pad deaf. Pads outside 0 to 15 are ignored.
  void setPad(int pad, const PadValues* values);

  /// The voices, owned by the core.
  void setVoices(VoicePool* pool) { voices = pool; }

  /// Starts the pad of `note` at the first frame of the next render. Notes without a pad are ignored.
  void noteOn(int note, int velocity) SIVRAY_NONBLOCKING;

  /// Releases the pad's voice if it is in gate mode.
  void noteOff(int note) SIVRAY_NONBLOCKING;

  /// Silences every voice; they end on their own in the renders that follow.
  void resetVoices() SIVRAY_NONBLOCKING;

  int activeVoiceCount() const { return activeVoices; }

  /// Writes `frames` frames of four channels: dry left and right, effect left and right, each within -32767 .. 32767.
  /// The channels must be interleaved in one buffer: channel i begins at word i of channels[0], and `stride` is 4.
  void render(std::int32_t* const* channels, int frames, int stride) SIVRAY_NONBLOCKING;

  /// The peak of the pad's voice in the last render, 0 to 32767; side 0 is left, 1 is right. Out of range gives 0.
  std::int32_t padLevel(unsigned pad, unsigned side) const SIVRAY_NONBLOCKING;

 private:
  const PadValues* padAt(int pad) const;
  int findVoice(int pad) const;
  int voiceOfPad(int pad) const;
  void readMeters();
  void releaseFinishedVoices();

  VoicePool* voices = nullptr;
  std::array<const PadValues*, kPadPlaces> pads{};
  int activeVoices = 0;
  int padCount;
  std::array<std::array<std::int32_t, kPadPlaces>, 2> meters{};
};

}  // namespace tesh::bramel::plugin::sivray
