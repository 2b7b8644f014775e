// The macro list bound to a generator: movements into its queue, program selection, and the macro chunk.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/ProcessBlock.h"
#include "core/RealTime.h"
#include "engine/Generator.h"
#include "macro/MacroControllerBase.h"
#include "macro/MacroNativeModeMap.h"

namespace tesh::vimo {

/// Told when the macro list was emptied or read anew.
class MacroListOwner {
 public:
  virtual ~MacroListOwner() = default;
  virtual void macroListChanged() = 0;
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

  // Movements, on the audio thread. An index past the list does nothing, a full queue drops what comes.

  /// The macro takes a value: stored, in force, reported, and mapped into the engine queue.
  void setMacroValue(std::uint64_t index, float value, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// The same for a non-numeric value.
  void setMacroObject(std::uint64_t index, std::uint64_t object, std::uint32_t frame,
                      ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// The engine follows a value that the macro does not keep.
  void moveTemporarily(std::uint64_t index, float value, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// Every macro that was moved temporarily returns to its stored value.
  void endTemporaryMoves(std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;
  /// Sets every macro as the program says, or to its default where the program is shorter than the list. The selected
  /// program, an empty database and a bank past the four do nothing; a program past the list is the last one.
  void selectProgram(std::uint64_t program, Bank bank, std::uint32_t frame, ProcessBlock& block) SIVRAY_NONBLOCKING;

  /// How many positions a control of the macro has: the values of its first set where that is quantized, else the
  /// integers that its engine parameter passes between the set's ends.
  std::uint64_t stepCount(std::uint64_t index) const;

  // Chunks, while no audio runs.

  /// What of a macro chunk is taken: all of it, or the current values, texts and selection.
  enum class ChunkParts { all, valuesOnly };
  /// Reads a chunk of any version. Sizes that reach past the end are cut there.
  void readChunk(std::span<const std::uint8_t> chunk, ChunkParts parts);
  /// Appends a chunk of the newest version.
  void writeChunk(std::vector<std::uint8_t>& out);
  /// Adds the programs of a patches file to the factory bank; a file of another version is passed over.
  void readPatches(std::span<const std::uint8_t> file);

  /// Destroys all macros.
  void clearMacros();
  /// A new macro without sets at the end of the list.
  MacroParameterControl& addMacro();

  midi_controller::MacroNativeModeMap nativeModeMap;

 private:
  void sendMapped(const MacroParameterControl& macro, float value, std::uint32_t frame, ProcessBlock& block) const;
  void readMacroSection(std::span<const std::uint8_t> section);
  std::vector<std::uint8_t> macroSection() const;
  void readValues(std::span<const std::uint8_t> values, std::uint32_t count, bool withObjects);

  Generator<float>& generator;
  MacroListOwner& owner;
};

}  // namespace tesh::vimo
