// The engine: pads, voices, master effect and output stage, and all their parameters behind one numbering.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/RealTime.h"
#include "effects/SivrayMultiEffector.h"
#include "engine/GlobalParameterDispatcher.h"
#include "engine/GlobalSaveParameterDispatcher.h"
#include "engine/ProgramBank.h"
#include "engine/Q57214DrumParameterInfo.h"
#include "engine/ReadParameterDispatcher.h"
#include "engine/voice/DrumCore.h"
#include "engine/voice/VoiceAllocator.h"
#include "parameters/ParameterGroupTable.h"

namespace tesh::bramel::plugin::sivray {

/// The instrument's pads, and the most that the numbering of parameters has places for.
inline constexpr int kPadCount = 8;
inline constexpr int kMaxPads = 16;

/// Runs at 44100 Hz. Rendering, notes and `setParameter` belong to the audio thread; reads may come from any thread.
class DrumEngine {
 public:
  /// `file` must outlive the engine. Each of the pads (held to 1 .. kMaxPads) gets a slot of `slotFrames` frames, and
  /// the sample file is read for all of them.
  DrumEngine(PcmFile& file, int padCount, std::size_t slotFrames);
  DrumEngine(const DrumEngine&) = delete;
  DrumEngine& operator=(const DrumEngine&) = delete;

  /// Renders `frames` frames of stereo. Control values move on a grid of 64 frames from the start of each call. A call
  /// for no frames writes nothing, but takes over a pending change of effect and gives back voices that have ended.
  void render(float* left, float* right, int frames) SIVRAY_NONBLOCKING;

  void noteOn(int note, int velocity) SIVRAY_NONBLOCKING { allocator.noteOn(note, velocity); }
  void noteOff(int note) SIVRAY_NONBLOCKING { allocator.noteOff(note); }

  /// Silences all voices and the effect.
  void resetSound() SIVRAY_NONBLOCKING;

  /// A transport message for the effect, see SivrayMultiEffector::transport.
  void transport(int message) SIVRAY_NONBLOCKING { effect.transport(message); }

  /// Sets a parameter from 0 .. 1 of its range. Unknown ids are ignored, what lies outside is the group's matter.
  void setParameter(std::uint32_t id, float value) SIVRAY_NONBLOCKING;

  /// The normalised value; -1 for an unknown id, 0 for a parameter without a range.
  float getParameter(std::uint32_t id) const SIVRAY_NONBLOCKING;

  /// The number of integers that the parameter's range spans, less 1; -1 for an unknown id.
  std::int32_t parameterRange(std::uint32_t id) const;

  /// Group number on three digits (000 for the effect), ": " and the name. Empty for an empty place.
  std::string parameterName(std::uint32_t id) const;
  std::string parameterDisplay(std::uint32_t id, float value) const;
  std::string parameterDisplay(std::uint32_t id) const;

  ProgramBank& bank() { return *programBank; }
  const ProgramBank& bank() const { return *programBank; }

 private:
  static constexpr int kMaxFrames = 2048;
  static constexpr int kChannels = 4;

  /// What a block of the largest size needs.
  struct Buffers {
    alignas(32) std::array<std::int32_t, static_cast<std::size_t>(kMaxFrames* kChannels)> mix;
    std::array<std::array<std::int16_t, kMaxFrames>, kChannels> buses;
  };

  /// A group and the row of an id in it; both null when the id names nothing.
  struct Place {
    IParameter* group = nullptr;
    const ParameterRow* row = nullptr;
    int index = 0;
  };

  Place placeOf(std::uint32_t id) const;
  void addPad(std::uint32_t pad);
  void renderBlock(float* left, float* right, int frames) SIVRAY_NONBLOCKING;
  ProgramBankGroups bankGroups();

  DrumCore core;
  VoiceAllocator allocator;
  effects::SivrayMultiEffector effect;
  ParameterGroupTable groups;
  std::unique_ptr<Buffers> buffers;
  GlobalSaveParameterDispatcher masterGroup;
  GlobalParameterDispatcher globalGroup;
  std::vector<std::unique_ptr<Q57214DrumParameterInfo>> padGroups;
  std::vector<std::unique_ptr<ReadParameterDispatcher>> meterGroups;
  std::unique_ptr<ProgramBank> programBank;
};

}  // namespace tesh::bramel::plugin::sivray
