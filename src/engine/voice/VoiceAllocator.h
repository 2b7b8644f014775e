// Assigns notes to voices, and mixes all voices to the two buses.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "engine/voice/PadTaps.h"
#include "engine/voice/PadValues.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"

namespace tesh::bramel::plugin::sivray {

class DrumCore;
class VoicePool;

/// The voices in use are always voices 0 to activeVoiceCount() - 1. A pad has at most one voice, and pads of the same
/// exclusive group share one. Notes are ignored until `setVoices`. Audio thread, except construction.
class VoiceAllocator {
 public:
  static constexpr int kFirstNote = 36;
  static constexpr std::size_t kPadPlaces = 16;

  /// For `padTotal` pads (limited to 0 .. 16). `core` is not used.
  VoiceAllocator(DrumCore& core, int padTotal);

  /// Sets a pad's settings, not owned. A pad without settings ignores its notes. Pads outside 0 to 15 are ignored.
  void setPad(int pad, const PadValues* values);

  /// The voices, owned by the core.
  void setVoices(VoicePool* pool) { voices = pool; }

  /// Starts the pad of `note` at the first frame of the next render. Velocities are 1 to 127; with less, the pad gets a
  /// voice, but nothing starts. Ignores notes without a pad.
  void noteOn(int note, int velocity) SIVRAY_NONBLOCKING;

  /// Releases the pad's voice if it plays in gate mode.
  void noteOff(int note) SIVRAY_NONBLOCKING;

  /// Silences every voice. The voices are released by the renders that follow.
  void resetVoices() SIVRAY_NONBLOCKING;

  int activeVoiceCount() const { return activeVoices; }

  /// Renders `frames` frames of both buses, and of the pads' own outs unless `pads` is null; then at most
  /// PadTaps::kFrames frames. Returns false if the effect bus is silent.
  bool render(BusWords output, int frames, const PadOuts* pads = nullptr) SIVRAY_NONBLOCKING;

  /// Advances by `frames` frames without sound. No voice may be in use.
  void skip(int frames) SIVRAY_NONBLOCKING;

  /// The peak of the pad's voice in the last render, 0 to 32767. Side 0 is left, side 1 right; any other gives 0. Any
  /// thread, but not during a render.
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
