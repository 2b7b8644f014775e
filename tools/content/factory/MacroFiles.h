// Makes the files of the macro description from the macro list and the kits.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "content/factory/Bank.h"
#include "content/factory/MacroLayout.h"

namespace sivray::factory {

/// A factory program: a kit, the numbers of its waves, and the values of all macros.
struct FactoryProgram {
  Kit kit;
  std::array<std::uint32_t, kPads> waves{};
  std::vector<float> values;
};

/// All macros, and the programs; there is at least one program.
struct FactoryBank {
  std::vector<MacroRow> layout;
  std::vector<FactoryProgram> programs;
};

/// Turns kits into programs, for a library with these waves in the order of their numbers. Throws TextError for an
/// unknown wave or effect, and std::invalid_argument when there is no kit.
FactoryBank makeFactoryBank(const std::vector<BankKit>& kits, const std::vector<std::string>& waveNames);

/// Returns the text of readme.json, which names the other files.
std::string makeReadme(const FactoryBank& bank);

/// Returns the engine's start state: the first program in the edit buffer, and all programs in the engine's own bank.
std::vector<std::uint8_t> makePluginChunk(const FactoryBank& bank);

/// Returns the macro chunk: the macro list, all programs, and the first program as current values.
std::vector<std::uint8_t> makeMacroChunk(const FactoryBank& bank);

/// Returns the run flags: the engine runs, and a host's state sets the macros alone, since they cover everything that
/// can be heard.
std::vector<std::uint8_t> makeMiscChunk();

/// Returns the text of parameter_description.json: each macro's value in programs that have no entry for it.
std::string makeParameterDescription(const FactoryBank& bank);

std::string makeCcMap();
std::string makeNativeModeMap();

/// Writes all of these files into `folder`. Throws std::runtime_error naming the file that could not be written.
void writeMacroFiles(const std::string& folder, const FactoryBank& bank);

}  // namespace sivray::factory
