// The macros of a generator: movements that reach its queue, program selection, and the macro chunk.
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

/// Told when the macro list was emptied or read again.
class MacroListOwner {
 public:
  virtual ~MacroListOwner() = default;
  virtual void macroListChanged() = 0;
};

/// An engine parameter and the value that it is about to take.
struct ComingValue {
  std::uint32_t id = 0;
  float value = 0.0F;
};
using ComingValues = std::vector<ComingValue>;

/// The values, texts and selection of a macro chunk.
struct ChunkValues {
  std::vector<ProgramEntry> entries;  ///< Of all macros.
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
  /// Steps of a macro whose engine parameter gives none.
  static constexpr std::uint64_t kDefaultSteps = 128;

  /// Both must outlive the controller.
  MacroController(Generator<float>& engine, MacroListOwner& listOwner) : generator(engine), owner(listOwner) {}

  // Movements, on the audio thread. An index past the list does nothing; a full queue drops the entry.

  /// Sets the stored and the live value, reports it, and puts the mapped values into the engine queue.
  void setMacroValue(std::uint64_t index, float value, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// The same for a value that is not a number.
  void setMacroObject(std::uint64_t index, std::uint64_t object, std::uint32_t frame,
                      ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// Sets the live value alone; the engine follows.
  void moveTemporarily(std::uint64_t index, float value, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// Returns every macro that was moved temporarily to its stored value.
  void endTemporaryMoves(std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// Selects a program and sets every macro to its value, or to the macro's default if the program has none. A program
  /// past the list is the last one. Does nothing if the program is selected already or the bank is empty or unknown.
  void selectProgram(std::uint64_t program, Bank bank, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;

  /// The number of positions of a control for the macro: the number of values of its first set if that is quantized,
  /// else the number of integers that its engine parameter passes between the set's ends.
  std::uint64_t stepCount(std::uint64_t index) const;

  // Append to `coming`, for Generator::prepare, the values that a change will give to engine parameters that read a
  // file. A macro, program or chunk that does not exist appends nothing. May allocate: never on the audio thread.

  void addReadsOfMacro(std::uint64_t index, float value, ComingValues& coming) const;
  void addReadsOfProgram(std::uint64_t program, Bank bank, ComingValues& coming) const;
  void addReadsOfChunk(std::span<const std::uint8_t> chunk, ComingValues& coming) const;

  // Chunks, while no audio runs.

  /// The parts of a macro chunk to read: all, or only the current values, texts and selection.
  enum class ChunkParts { all, valuesOnly };
  /// Reads a chunk of any version. Sections that reach past the end are cut off there.
  void readChunk(std::span<const std::uint8_t> chunk, ChunkParts parts);
  /// Appends a chunk of the newest version: both steps that follow.
  void writeChunk(std::vector<std::uint8_t>& out);
  /// Takes what the next block may change.
  ChunkValues takeValues();
  /// Appends the chunk with these values. May run beside blocks, but not beside a change of the factory bank.
  void writeChunk(const ChunkValues& values, std::vector<std::uint8_t>& out) const;
  /// Appends the programs of a patches file to the factory bank. Ignores a file of another version.
  void readPatches(std::span<const std::uint8_t> file);

  /// Destroys all macros.
  void clearMacros();
  /// A new macro without sets at the end of the list.
  MacroParameterControl& addMacro();

  midi_controller::MacroNativeModeMap nativeModeMap;
  JsonDocuments documents;  ///< Of the description.

 private:
  void sendMapped(const MacroParameterControl& macro, float value, std::uint32_t frame, ProcessBlock& block) const;
  void readMacroSection(std::span<const std::uint8_t> section);
  std::vector<std::uint8_t> macroSection() const;

  Generator<float>& generator;
  MacroListOwner& owner;
};

}  // namespace tesh::vimo
