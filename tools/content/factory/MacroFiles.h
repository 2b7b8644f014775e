// The files of the macro description, made of the macro list and the kits.
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

/// What the description is made of; there is at least one program.
struct FactoryBank {
  std::vector<MacroRow> layout;
  std::vector<FactoryProgram> programs;
};

/// Turns kits into programs of a library with these waves, in the order of their numbers. Throws TextError for an
/// unknown wave or effect, and std::invalid_argument when there is no kit.
FactoryBank makeFactoryBank(const std::vector<BankKit>& kits, const std::vector<std::string>& waveNames);

/// The description itself, naming the files below.
std::string makeReadme(const FactoryBank& bank);

/// The engine's start state: the first program, and all of them in the engine's own bank.
std::vector<std::uint8_t> makePluginChunk(const FactoryBank& bank);

/// The macro list, the programs, and the first program as current values.
std::vector<std::uint8_t> makeMacroChunk(const FactoryBank& bank);

/// The run flags: the engine runs, and a host's state sets macros alone, since they reach all that sounds.
std::vector<std::uint8_t> makeMiscChunk();

/// The value of each macro in programs that have no entry for it.
std::string makeParameterDescription(const FactoryBank& bank);

std::string makeCcMap();
std::string makeNativeModeMap();

/// Writes all of them into `folder`. Throws std::runtime_error naming the file that could not be written.
void writeMacroFiles(const std::string& folder, const FactoryBank& bank);

}  // namespace sivray::factory
