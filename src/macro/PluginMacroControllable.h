// A generator with its macros: the queues through which other threads give commands, and the loop that runs once a
// block.
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

/// What a command does when its time has come.
enum class MacroCommandKind : std::uint32_t {
  setMacro = 0,         ///< To `object` if that is not 0, else to `value`.
  setParameter = 1,     ///< `index` is an engine parameter; no macro is involved.
  moveTemporarily = 2,  ///< Sets the live value alone.
  endTemporaryMoves = 3
};

struct MacroCommand {
  MacroCommandKind kind = MacroCommandKind::setMacro;
  std::uint32_t index = 0;
  float value = 0.0F;
  std::uint64_t object = 0;
  std::uint64_t timestamp = 0;  ///< Nanoseconds of the host's clock.
};

/// Told what happened in a block: inside `process` on the audio thread, so that it must not wait or allocate.
class MacroEchoListener {
 public:
  virtual ~MacroEchoListener() = default;
  virtual void macroMoved(std::uint32_t index, float value, std::uint32_t frame) SIVRAY_NONBLOCKING = 0;
  virtual void programSelected() SIVRAY_NONBLOCKING = 0;
  /// `note` << 8 | velocity, of a note-on or note-off.
  virtual void noteReceived(std::uint16_t noteAndVelocity) SIVRAY_NONBLOCKING = 0;
  /// The macro list was emptied or read again. Not on the audio thread.
  virtual void macroListChanged() {}
};

/// All of a host's state that the next block may change.
struct StateSnapshot {
  std::vector<std::uint8_t> flags;
  EngineSnapshot engine;
  ChunkValues macros;
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

  /// Runs the commands and program changes of the block, then the engine, and reports movements and notes. A timestamp
  /// becomes the frame max(0, (timestamp - hostTime) * speed + offset) * sampleRate / 10^9, computed in double
  /// precision and truncated. `midiIn` must have room for eight more messages. Audio thread.
  void process(ProcessBlock& block, std::uint64_t hostTime, double speed, double offset) SIVRAY_NONBLOCKING;

  // Filled between two blocks. A full queue drops the entry.
  LockFreeRing<MacroCommand> commandQueue{512};
  LockFreeRing<MidiEvent> programQueue{8};

  MacroEchoListener* editor = nullptr;                             ///< May be null.
  float sampleRate = static_cast<float>(cofu::core::kEngineRate);  ///< Of the engine.
  bool running = true;  ///< If false, the input passes through and the engine stops.
  bool wasRunning = true;
  bool storeEngineChunk = false;  ///< Whether setStateContent restores the engine's own section.

  void macroListChanged() override;

  // The host's state, while no audio runs.

  /// Run flags, the generator's state and the macro chunk. The bytes stay valid until the next call.
  std::span<const std::uint8_t> getStateContent();
  /// The same in two steps. The first takes what the next block may change.
  StateSnapshot snapshotState();
  /// The second may run beside blocks, but not beside a change of the factory bank. Appends to `out`.
  void writeStateContent(const StateSnapshot& snapshot, std::vector<std::uint8_t>& out) const;
  /// Restores such a content. Sizes that do not add up change nothing and give false. The generator must not be active.
  bool setStateContent(std::span<const std::uint8_t> content);
  /// What such a content will read from files, see MacroController.
  void addReadsOfState(std::span<const std::uint8_t> content, ComingValues& coming) const;
  /// Reads the run flags from a misc file or section. One that is too short or has another tag or version changes
  /// nothing.
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
