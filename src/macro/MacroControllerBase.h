// The list of macros with the program databases and the controller map: what does not depend on the kind of engine.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/RealTime.h"
#include "macro/MacroParameterControl.h"
#include "storage/programs/MacroProgramDatabaseDelegate.h"
#include "storage/programs/ProgramDatabase.h"

namespace tesh::vimo {

/// Places of the program databases. Nothing is ever stored in the ghost bank: it is a selection that matches no list.
enum class Bank : std::uint64_t { factory = 0, factoryTwo = 1, user = 2, ghost = 3 };

/// A program by its number and the place of its database.
struct ProgramSelection {
  std::uint64_t program = 0;
  std::uint64_t bank = 0;
  bool operator==(const ProgramSelection&) const = default;
};

/// All operations under the shell's main lock. The macro list changes only while no audio runs.
class MacroControllerBase : public MacroProgramDatabaseDelegate, public MacroParameterControlListener {
 public:
  static constexpr std::uint64_t kDatabaseCount = 4;
  static constexpr std::uint8_t kPitchBendKey = 224;

  MacroControllerBase();

  float macroValue(std::uint64_t index) const SIVRAY_NONBLOCKING override;
  std::uint64_t macroObject(std::uint64_t index) const SIVRAY_NONBLOCKING override;
  const std::string& programName() const override { return selectedName; }
  const std::string& programComment() const override { return selectedComment; }
  std::uint32_t programTime() const override { return selectedTime; }
  void macrosChanged() override {}

  /// The value in force, read as macroValue reads the stored one.
  float liveMacroValue(std::uint64_t index) const SIVRAY_NONBLOCKING;

  std::uint64_t macroCount() const override { return macros.size(); }
  /// Null past the list.
  MacroParameterControl* macroAt(std::uint64_t index) SIVRAY_NONBLOCKING;
  const MacroParameterControl* macroAt(std::uint64_t index) const SIVRAY_NONBLOCKING;
  /// 0 past the list.
  float macroDefault(std::uint64_t index) const;

  /// The macro of a MIDI controller or of pitch bend, -1 where there is none.
  std::int64_t macroForController(std::uint8_t number) const SIVRAY_NONBLOCKING;
  bool hasController(std::uint8_t number) const { return ccMap.contains(number); }
  bool hasPitchBend() const { return ccMap.contains(kPitchBendKey); }
  std::int64_t macroForPitchBend() const { return macroForController(kPitchBendKey); }
  /// Reads the map from a file; one that cannot be opened leaves it empty. Throws std::runtime_error when the text is
  /// no JSON object or has no object "cc_map".
  void loadCcMap(const std::string& path);
  void readCcMap(std::span<const std::uint8_t> text);

  bool isHidden(std::uint64_t macro) const;

  // The program databases. An index past the four, or a program past the list, gives 0 or changes nothing.

  /// Loads an image of records with `macroCount` macros. Where that differs from the macro list all databases are
  /// brought to the list's count, and macros that the image did not know take their defaults. An image that brings no
  /// program leaves the others alone.
  void loadDatabase(std::uint64_t index, std::span<const std::uint8_t> image, std::uint64_t imageMacroCount,
                    ProgramDatabase::Mode mode);
  const ProgramDatabase* database(std::uint64_t index) const SIVRAY_NONBLOCKING;
  std::uint64_t programCount(std::uint64_t index) const SIVRAY_NONBLOCKING;
  void storeCurrent(std::uint64_t index);
  void overwrite(std::uint64_t program, std::uint64_t bank);
  /// Bytes of the image as saveDatabase writes it.
  std::size_t databaseByteSize(std::uint64_t index);
  void saveDatabase(std::uint64_t index, std::vector<std::uint8_t>& out);
  /// Takes a program out of its list; the selection goes on showing the same program, or none if it was that one.
  void deleteProgram(std::uint64_t program, std::uint64_t bank);
  void moveProgram(std::uint64_t bank, std::uint64_t from, std::uint64_t to);

  ProgramSelection selection() const { return selected; }
  /// Shows another program as selected; no macro moves.
  void setSelection(std::uint64_t program, std::uint64_t bank) { selected = {program, bank}; }
  void setProgramName(std::string_view name) { selectedName.assign(name); }

  std::vector<std::uint64_t> automationBlacklist;  ///< Macros hidden from the host's automation.
  std::map<std::uint8_t, std::uint64_t> ccMap;     ///< MIDI controller, or kPitchBendKey, to macro.

 protected:
  ProgramDatabase* databaseAt(std::uint64_t index);

  std::vector<std::unique_ptr<MacroParameterControl>> macros;
  ProgramSelection selected;
  std::string selectedName;
  std::string selectedComment;
  std::uint32_t selectedTime = 0;

 private:
  std::array<std::unique_ptr<ProgramDatabase>, kDatabaseCount> databases;
};

}  // namespace tesh::vimo
