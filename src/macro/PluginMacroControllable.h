// A generator with its macros: the queues for commands of other threads, and the loop that runs once per block.
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

/// The effect of a command.
enum class MacroCommandKind : std::uint32_t {
  setMacro = 0,         ///< Sets a macro to `object` if that is not 0, else to `value`.
  setParameter = 1,     ///< `index` is an engine parameter; macros are not involved.
  moveTemporarily = 2,  ///< Sets a macro's live value only.
  endTemporaryMoves = 3
};

struct MacroCommand {
  MacroCommandKind kind = MacroCommandKind::setMacro;
  std::uint32_t index = 0;
  float value = 0.0F;
  std::uint64_t object = 0;
  std::uint64_t timestamp = 0;  ///< Nanoseconds of the host's clock.
};

/// Notified inside `process`, on the audio thread, so it must neither wait nor allocate.
class MacroEchoListener {
 public:
  virtual ~MacroEchoListener() = default;
  virtual void macroMoved(std::uint32_t index, float value, std::uint32_t frame) SIVRAY_NONBLOCKING = 0;
  virtual void programSelected() SIVRAY_NONBLOCKING = 0;
  /// `note` << 8 | velocity, of a note-on or note-off.
  virtual void noteReceived(std::uint16_t noteAndVelocity) SIVRAY_NONBLOCKING = 0;
};

/// Everything in a host's state that the next block may change.
struct StateSnapshot {
  std::vector<std::uint8_t> flags;
  EngineSnapshot engine;
  ChunkValues macros;
};

template <typename Engine>
class PluginMacroControllable;

template <>
class PluginMacroControllable<Generator<float>> final : public PluginListener {
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
  float sampleRate = static_cast<float>(cofu::core::kEngineRate);  ///< The engine's rate in Hz.
  bool running = true;  ///< If false, the input passes through and the engine stops.
  bool wasRunning = true;
  bool storeEngineChunk = false;  ///< Whether setStateContent restores the engine's own section.

  // The host's state. Only while no audio runs, except where noted.

  /// Run flags, the generator's state and the macro chunk. The bytes stay valid until the next call.
  std::span<const std::uint8_t> getStateContent();
  /// As above in two steps. The first copies the data that the next block may change.
  StateSnapshot snapshotState();
  /// The second may run during blocks, but not during a change of the factory bank. Appends to `out`.
  void writeStateContent(const StateSnapshot& snapshot, std::vector<std::uint8_t>& out) const;
  /// Restores such a content. If its sizes are inconsistent, returns false and changes nothing. The generator must not
  /// be active.
  bool setStateContent(std::span<const std::uint8_t> content);
  /// Adds the values of such a content that will read files, see MacroController.
  void addReadsOfState(std::span<const std::uint8_t> content, ComingValues& coming) const;
  /// Reads the run flags from a misc file or section. Ignores one that is too short or has an unknown tag or version.
  void readMisc(std::span<const std::uint8_t> misc);
  /// Appends a misc section of the newest version.
  void writeMisc(std::vector<std::uint8_t>& out) const;

 private:
  /// Converts timestamps to frames of the block.
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
