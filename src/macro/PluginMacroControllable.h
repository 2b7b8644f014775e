// The shell around a generator and its macros: the command queues between the other threads and the audio thread, and
// the loop that runs once a block.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/EngineRate.h"
#include "core/LockFreeRing.h"
#include "core/MidiEvent.h"
#include "core/ProcessBlock.h"
#include "core/RealTime.h"
#include "engine/Generator.h"
#include "macro/MacroController.h"

namespace tesh::vimo {

/// What a command does when it comes due.
enum class MacroCommandKind : std::uint32_t {
  setMacro = 0,         ///< To `object` where that is not 0, else to `value`.
  setParameter = 1,     ///< `index` is an engine parameter; no macro is involved.
  moveTemporarily = 2,  ///< The engine follows, the stored value stays.
  endTemporaryMoves = 3
};

struct MacroCommand {
  MacroCommandKind kind = MacroCommandKind::setMacro;
  std::uint32_t index = 0;
  float value = 0.0F;
  std::uint64_t object = 0;
  std::uint64_t timestamp = 0;  ///< Nanoseconds of the host's clock.
};

/// Told of what happened, on the audio thread. Must not wait or allocate. All but the last are told inside `process`.
class MacroEchoListener {
 public:
  virtual ~MacroEchoListener() = default;
  virtual void macroMoved(std::uint32_t index, float value, std::uint32_t frame) SIVRAY_NONBLOCKING = 0;
  virtual void programSelected() SIVRAY_NONBLOCKING = 0;
  /// `note` << 8 | velocity, of a note-on or note-off.
  virtual void noteReceived(std::uint16_t noteAndVelocity) SIVRAY_NONBLOCKING = 0;
  /// The macro list was emptied or read anew. Not on the audio thread.
  virtual void macroListChanged() {}
};

template <typename Engine>
class PluginMacroControllable;

template <>
class PluginMacroControllable<Generator<float>> final : public PluginListener, public MacroListOwner {
 public:
  using Controller = MacroController<Generator<float>>;

  PluginMacroControllable(std::string instrument, std::unique_ptr<Generator<float>> engine);

  Generator<float>& generator() { return *ownGenerator; }
  const Generator<float>& generator() const { return *ownGenerator; }
  Controller& controller() { return ownController; }
  const Controller& controller() const { return ownController; }
  const std::string& instrumentName() const { return name; }

  /// Runs the commands and program changes that fall into the block, then the engine, and reports what moved. A
  /// timestamp falls on frame max(0, (timestamp - hostTime) * speed + offset) * sampleRate / 10^9, in double precision
  /// and cut to an integer. `midiIn` is given room by the caller. Audio thread, under the shell's main lock.
  void process(ProcessBlock& block, std::uint64_t hostTime, double speed, double offset) SIVRAY_NONBLOCKING;

  /// Puts in a command or a program change; a full queue drops it and gives false. Under the shell's main lock.
  LockFreeRing<MacroCommand> commandQueue{512};
  LockFreeRing<MidiEvent> programQueue{8};

  MacroEchoListener* editor = nullptr;                             ///< May be null.
  float sampleRate = static_cast<float>(cofu::core::kEngineRate);  ///< Of the engine.
  bool running = true;  ///< Otherwise the input passes through and the engine rests.
  bool wasRunning = true;
  bool storeEngineChunk = false;  ///< Whether a host's state sets the engine's own chunk.

  void macroListChanged() override;

  // The host's state, while no audio runs.

  /// The content: run flags, the generator's state and the macro chunk. The bytes stay good until the next call.
  std::span<const std::uint8_t> getStateContent();
  /// Takes in such a content. One of another shape changes nothing. The generator must not be active.
  void setStateContent(std::span<const std::uint8_t> content);
  /// Reads the run flags of a misc file or section; one too short, or of another tag or version, changes nothing.
  void readMisc(std::span<const std::uint8_t> misc);
  /// Appends a misc section of the newest version.
  void writeMisc(std::vector<std::uint8_t>& out) const;

 private:
  /// Turns timestamps into frames of the block.
  struct BlockClock;
  void runCommands(ProcessBlock& block, const BlockClock& clock);
  void runCommand(const MacroCommand& command, std::uint32_t frame, ProcessBlock& block);
  void runProgramChanges(ProcessBlock& block, const BlockClock& clock);
  void runEngine(ProcessBlock& block);
  void report(ProcessBlock& block);

  std::string name;
  std::unique_ptr<Generator<float>> ownGenerator;
  Controller ownController;
  std::vector<std::uint8_t> stateContent;
};

}  // namespace tesh::vimo
