// The macros of a generator: their movements into its queue, program selection, and the macro chunk.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/ProcessBlock.h"
#include "core/RealTime.h"
#include "engine/Generator.h"
#include "macro/Json.h"
#include "macro/MacroControllerBase.h"
#include "macro/MacroNativeModeMap.h"

namespace tesh::vimo {

/// An engine parameter and the value that it is about to take.
struct ComingValue {
  std::uint32_t id = 0;
  float value = 0.0F;
};
using ComingValues = std::vector<ComingValue>;

/// The values, texts and selection of a macro chunk.
struct ChunkValues {
  std::vector<ProgramEntry> entries;  ///< One per macro.
  std::string name;
  std::string comment;
  std::uint32_t time = 0;
  ProgramSelection selection;
};

template <typename Engine>
class MacroController;

template <>
class MacroController<Generator<float>> final : public MacroControllerBase {
 public:
  /// Steps of a macro whose engine parameter has no range.
  static constexpr std::uint64_t kDefaultSteps = 128;

  /// `engine` must outlive the controller.
  explicit MacroController(Generator<float>& engine) : generator(engine) {}

  // Movements, on the audio thread. An index past the list does nothing; a full queue drops the entry.

  /// Sets the stored and the live value, reports it, and queues the mapped values for the engine.
  void setMacroValue(std::uint64_t index, float value, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// As above, for an object value.
  void setMacroObject(std::uint64_t index, std::uint64_t object, std::uint32_t frame,
                      ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// Sets the live value only, and with it the engine.
  void moveTemporarily(std::uint64_t index, float value, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// Moves every macro that was moved temporarily back to its stored value.
  void endTemporaryMoves(std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// Selects a program and sets every macro to its value, or to the macro's default if the program has none. A program
  /// past the list means the last one. Does nothing if the program is already selected, or if the bank is empty or
  /// unknown.
  void selectProgram(std::uint64_t program, Bank bank, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;

  /// The number of positions of a control for the macro: the number of values if its first set is quantized, else the
  /// number of integers that its engine parameter takes between the set's ends.
  std::uint64_t stepCount(std::uint64_t index) const;

  // Append to `coming`, for Generator::prepare, the values that a change will set on engine parameters that read a
  // file. Append nothing for a macro, program or chunk that does not exist. May allocate, so never on the audio thread.

  void addReadsOfMacro(std::uint64_t index, float value, ComingValues& coming) const;
  void addReadsOfProgram(std::uint64_t program, Bank bank, ComingValues& coming) const;
  void addReadsOfChunk(std::span<const std::uint8_t> chunk, ComingValues& coming) const;

  // Chunks, while no audio runs.

  /// The parts of a macro chunk to read: all, or only the current values, texts and selection.
  enum class ChunkParts { all, valuesOnly };
  /// Reads a chunk of any version. A section that extends past the end is truncated.
  void readChunk(std::span<const std::uint8_t> chunk, ChunkParts parts);
  /// Appends a chunk of the newest version: takeValues, then the other writeChunk.
  void writeChunk(std::vector<std::uint8_t>& out);
  /// Copies the values that the next block may change.
  ChunkValues takeValues();
  /// Appends the chunk with these values. May run during blocks, but not during a change of the factory bank.
  void writeChunk(const ChunkValues& values, std::vector<std::uint8_t>& out) const;
  /// Appends the programs of a patches file to the factory bank. Ignores a file of another version.
  void readPatches(std::span<const std::uint8_t> file);

  /// Destroys all macros.
  void clearMacros();
  /// Appends a new macro without sets to the list.
  MacroParameterControl& addMacro();

  midi_controller::MacroNativeModeMap nativeModeMap;
  JsonDocuments documents;  ///< Documents of the description.

 private:
  void sendMapped(const MacroParameterControl& macro, float value, std::uint32_t frame, ProcessBlock& block) const;
  void readMacroSection(std::span<const std::uint8_t> section);
  std::vector<std::uint8_t> macroSection() const;

  Generator<float>& generator;
};

}  // namespace tesh::vimo
