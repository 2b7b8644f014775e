// The four program databases of an instrument, and the selected program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "core/RealTime.h"
#include "storage/programs/Bank.h"
#include "storage/programs/MacroProgramDatabaseDelegate.h"
#include "storage/programs/ProgramDatabase.h"

namespace tesh::vimo {

/// The macros that programs hold values for.
class MacroList : public MacroProgramDatabaseDelegate {
 public:
  /// The value for programs that have no entry for the macro; 0 past the list.
  virtual float macroDefault(std::uint64_t index) const = 0;
};

/// One call at a time, except where noted. For a bank that does not exist or a program past its list, reads return null
/// or 0, and writes change nothing.
class ProgramShelf {
 public:
  /// `macroList` must outlive the shelf.
  explicit ProgramShelf(const MacroList& macroList);

  const ProgramDatabase* database(Bank bank) const SIVRAY_NONBLOCKING;
  std::uint64_t programCount(Bank bank) const SIVRAY_NONBLOCKING;

  /// Truncates or extends the records of a bank to the current number of macros.
  void fit(Bank bank);

  /// Loads an image of records with `imageMacroCount` macros. If the macro list has another number, the records of all
  /// banks are fitted to it, and macros past `imageMacroCount` get their defaults in all of them. An image without
  /// programs leaves the other banks unchanged.
  void loadDatabase(Bank bank, std::span<const std::uint8_t> image, std::uint64_t imageMacroCount,
                    ProgramDatabase::Mode mode);

  /// First half of appending an image: reads the image's programs and fits them to the macro list. Uses no bank, so any
  /// thread may call it at any time.
  std::unique_ptr<ProgramDatabase> readImage(std::span<const std::uint8_t> image, std::uint64_t imageMacroCount) const;
  /// Second half, if the image has programs: first, in short steps, the effects of loadDatabase on the present records.
  /// A step fits kFitStep records of every bank from `fromRecord` on, and returns true if more follow.
  bool fitSome(std::size_t fromRecord, std::uint64_t imageMacroCount);
  static constexpr std::size_t kFitStep = 2048;
  /// Last, moves the programs of `incoming` to the end of the bank.
  void append(Bank bank, ProgramDatabase& incoming);

  /// Stores the current values as the last program of the bank.
  void storeCurrent(Bank bank);
  /// Stores the current values into a program.
  void overwrite(std::uint64_t program, Bank bank);

  /// Bytes of the image that saveDatabase appends.
  std::size_t databaseByteSize(Bank bank) const;
  void saveDatabase(Bank bank, std::vector<std::uint8_t>& out);

  /// Removes a program. The selection stays on its program. If the selected number is that of the removed program, in
  /// any bank, the selection moves to the ghost bank.
  void deleteProgram(std::uint64_t program, Bank bank);
  /// Removes programs that are no longer in the bank's file; there is a flag for every program. The selection stays on
  /// its program, or moves to the ghost bank if that is removed.
  void dropPrograms(Bank bank, const std::vector<bool>& isGone);
  /// Moves a program to position `to`. The selection stays on its program.
  void moveProgram(Bank bank, std::uint64_t from, std::uint64_t to);

  ProgramSelection selection() const SIVRAY_NONBLOCKING { return selected; }
  /// Changes the selection only; no macro moves.
  void setSelection(std::uint64_t program, Bank bank) SIVRAY_NONBLOCKING { selected = {program, bank}; }

 private:
  ProgramDatabase* databaseAt(Bank bank);

  const MacroList& macros;
  std::array<ProgramDatabase, kBankCount> databases;
  ProgramSelection selected;
};

}  // namespace tesh::vimo
