// The inner synth: the engine with its sample file, played by MIDI messages.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/RealTime.h"
#include "engine/DrumEngine.h"
#include "engine/EventSequencer.h"
#include "engine/samples/PcmFile.h"

namespace tesh::bramel::plugin::sivray {

/// Shaped like a plug-in, but no host talks to it: SivrayPlugin calls its operations.
class VstXSynth {
 public:
  /// The first two arguments are not used. `folder` is the folder of the sample files inside the resource directory,
  /// `slotFrames` the length of a pad's slot in frames.
  VstXSynth(std::nullptr_t, int, int padCount, std::string_view folder, std::size_t slotFrames, WaveLoading loading)
      : pcmFile(folder), drumEngine(pcmFile, padCount, slotFrames, loading) {}

  static constexpr int inputCount() { return 0; }
  static constexpr int outputCount() { return 2; }
  static constexpr const char* typeName() { return "VstXSynth"; }

  /// Renders into two channels and the connected ones of `outs`; there are no inputs. Returns whether all outputs are
  /// known to be zero.
  bool processReplacing(float* left, float* right, int frames, const EngineOuts* outs = nullptr) SIVRAY_NONBLOCKING {
    return drumEngine.render(left, right, frames, outs);
  }

  /// Handles notes 36 to 43, controllers 123 and 126 (all notes off), program changes, and the engine's transport
  /// message 0xF4. Ignores the channel and all other messages.
  void processEvent(const SequencerMessage& message) SIVRAY_NONBLOCKING;

  /// Sets "BPMx10" (id 0) or "Trigger" (id 1).
  void setGlobalParameterValue(std::uint32_t id, float value) SIVRAY_NONBLOCKING {
    drumEngine.setParameter(parameterId(kGlobalGroup, 0) | id, value);
  }

  void suspend() SIVRAY_NONBLOCKING { drumEngine.resetSound(); }
  void resume() SIVRAY_NONBLOCKING { drumEngine.resetSound(); }

  DrumEngine& engine() { return drumEngine; }
  const DrumEngine& engine() const { return drumEngine; }

 private:
  PcmFile pcmFile;
  DrumEngine drumEngine;
};

}  // namespace tesh::bramel::plugin::sivray
