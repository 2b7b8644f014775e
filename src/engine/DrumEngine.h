// The engine: pads, voices, master effect and output stage, with all their parameters under one numbering.
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

/// The number of pads, and the largest number that the parameter ids have room for.
inline constexpr int kPadCount = 8;
inline constexpr int kMaxPads = 16;

/// Outs beside the main one. A pad's out carries its voice before sends, effect and master level; the effect's out
/// carries the effect's output before the master level. They do not change the main out.
struct EngineOuts {
  PadOuts pads;
  StereoOut effect;

  bool isConnected() const SIVRAY_NONBLOCKING;
  /// The same outs, starting `frame` frames later.
  EngineOuts from(int frame) const SIVRAY_NONBLOCKING;
};

/// When the engine reads the pads' waves.
enum class WaveLoading : std::uint8_t {
  atOnce,
  later  ///< In `loadWaves`, for an engine whose state will be set first: the default waves would be read for nothing.
};

/// Runs at 44100 Hz. `render`, notes and `setParameter` belong to the audio thread. Reads may come from any thread,
/// except those of the meters during a render.
class DrumEngine {
 public:
  /// Builds `padCount` pads (limited to 1 .. kMaxPads), each with a slot of `slotFrames` frames and a wave. `file` must
  /// outlive the engine. Allocates all memory that the engine ever needs.
  DrumEngine(PcmFile& file, int padCount, std::size_t slotFrames, WaveLoading loading = WaveLoading::atOnce);
  DrumEngine(const DrumEngine&) = delete;
  DrumEngine& operator=(const DrumEngine&) = delete;

  /// Reads completely the waves that no pad has read yet. Must not run during a block.
  void loadWaves();

  /// Reads one more piece of the waves that blocks have changed. Call once per block, on the audio thread.
  void readOn() SIVRAY_NONBLOCKING { core.waves().readOn(); }

  /// Renders `frames` frames with a full scale of 1.0. Voices check their pads' settings every 64 frames from the start
  /// of each call. With 0 frames it writes nothing, but applies a pending change of effect and releases finished
  /// voices. Also fills the connected ones of `outs`, which may be null. Returns whether all outputs are known to be
  /// zero.
  bool render(float* left, float* right, int frames, const EngineOuts* outs = nullptr) SIVRAY_NONBLOCKING;

  /// Notes 36 and up play the pads; a velocity is 1 to 127. See VoiceAllocator.
  void noteOn(int note, int velocity) SIVRAY_NONBLOCKING { allocator.noteOn(note, velocity); }
  void noteOff(int note) SIVRAY_NONBLOCKING { allocator.noteOff(note); }

  /// Silences all voices and the effect.
  void resetSound() SIVRAY_NONBLOCKING;

  /// Passes a transport message to the effect, see SivrayMultiEffector::transport.
  void transport(int message) SIVRAY_NONBLOCKING { effect.transport(message); }

  /// Sets a parameter to `value`, 0 to 1 of its range. Ignores unknown ids. Values outside 0 to 1 are limited for the
  /// parameters of pads and effect.
  void setParameter(std::uint32_t id, float value) SIVRAY_NONBLOCKING;

  /// See Generator::readsFile and Generator::prepare.
  bool readsFile(std::uint32_t id) const;
  void prepare(std::uint32_t id, float value);

  /// Returns the value as 0 to 1 of its range; -1 for an unknown id, 0 for a parameter with one value only.
  float getParameter(std::uint32_t id) const SIVRAY_NONBLOCKING;

  /// Returns the maximum less the minimum of a parameter's integers; -1 for an unknown id.
  std::int32_t parameterRange(std::uint32_t id) const;

  /// Returns the group's number in three digits (000 for the effect), ": " and the parameter's name, as in "003:
  /// Punch". Empty if there is no such group.
  std::string parameterName(std::uint32_t id) const;

  /// Returns the text for `value`, or for the current value. Empty for an unknown id.
  std::string parameterDisplay(std::uint32_t id, float value) const;
  std::string parameterDisplay(std::uint32_t id) const;

  ProgramBank& bank() { return *programBank; }
  const ProgramBank& bank() const { return *programBank; }

 private:
  static constexpr int kMaxFrames = PadTaps::kFrames;

  /// Work buffers for the largest block.
  struct Buffers {
    using Words = std::array<std::int16_t, static_cast<std::size_t>(2 * (kMaxFrames + kBusSlack))>;
    alignas(32) Words dry;
    alignas(32) Words effect;
    alignas(32) std::array<std::int16_t, kMaxFrames> wetLeft;
    alignas(32) std::array<std::int16_t, kMaxFrames> wetRight;
  };

  /// The parameter that an id refers to. Group and row are null for an unknown id.
  struct Place {
    IParameter* group = nullptr;
    const ParameterRow* row = nullptr;
    int index = 0;
  };

  Place placeOf(std::uint32_t id) const;
  void addPad(std::uint32_t pad);
  bool renderBlock(float* left, float* right, int frames, const EngineOuts* outs) SIVRAY_NONBLOCKING;
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
