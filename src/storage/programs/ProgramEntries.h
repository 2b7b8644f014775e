// The values of a program's macros. Programs that were read from equal images share them, so that the factory programs
// are held once, however many instances there are.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "core/RealTime.h"

namespace tesh::vimo {

/// The value of one macro in a program, 0 to 1. If the object is not 0, it counts instead of the value.
struct ProgramEntry {
  float value = 0.0F;
  std::uint64_t object = 0;
};

/// The entries of all records of an image, one record after the other.
using EntryTable = std::vector<ProgramEntry>;

/// How the entries lie in an image: each a float, with an object of 8 bytes behind it if `hasObjects`.
struct EntryLayout {
  std::size_t records = 0;
  std::size_t headBytes = 0;  ///< In front of each record's entries.
  std::size_t entriesOfRecord = 0;
  bool hasObjects = false;
};

/// Reads the entries of `bytes`, which begin with the first record and hold all of them. While somebody holds a table
/// with the same bits, returns that one. Any thread.
std::shared_ptr<const EntryTable> sharedTable(std::span<const std::uint8_t> bytes, const EntryLayout& layout);

/// The entries of one program: a stretch of a shared table until they change, then a list of their own.
class ProgramEntries {
 public:
  /// `count` entries of zero.
  explicit ProgramEntries(std::size_t count) : own(count) {}
  /// `count` entries of `entryTable` from `first` on.
  ProgramEntries(std::shared_ptr<const EntryTable> entryTable, std::size_t first, std::size_t count);

  std::span<const ProgramEntry> all() const SIVRAY_NONBLOCKING {
    return table ? shared : std::span<const ProgramEntry>(own);
  }

  /// The entries as a list that belongs to this program alone.
  std::vector<ProgramEntry>& changeable();

 private:
  std::shared_ptr<const EntryTable> table;  ///< Null once the entries are in `own`.
  std::span<const ProgramEntry> shared;     ///< In `table`.
  std::vector<ProgramEntry> own;
};

}  // namespace tesh::vimo
