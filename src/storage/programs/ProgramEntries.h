// The values of a program's macros. Programs read from equal images share them, so that the factory programs are in
// memory only once for all instances.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "core/RealTime.h"

namespace tesh::vimo {

/// The value of one macro in a program, 0 to 1. If `object` is not 0, it counts instead of the value.
struct ProgramEntry {
  float value = 0.0F;
  std::uint64_t object = 0;
};

/// The entries of all records of an image, record by record.
using EntryTable = std::vector<ProgramEntry>;

/// The layout of the entries in an image: each is a float, followed by an object of 8 bytes if `hasObjects`.
struct EntryLayout {
  std::size_t records = 0;
  std::size_t headBytes = 0;  ///< Bytes before each record's entries.
  std::size_t entriesOfRecord = 0;
  bool hasObjects = false;
};

/// Reads the entries of all records from `bytes`, which begin with the first record. Returns the existing table if
/// somebody holds one with the same bits. Any thread.
std::shared_ptr<const EntryTable> sharedTable(std::span<const std::uint8_t> bytes, const EntryLayout& layout);

/// The entries of one program: a range of a shared table, or a private list once they have been changed.
class ProgramEntries {
 public:
  /// `count` entries of zero.
  explicit ProgramEntries(std::size_t count) : own(count) {}
  /// `count` entries of `entryTable` from `first` on.
  ProgramEntries(std::shared_ptr<const EntryTable> entryTable, std::size_t first, std::size_t count);

  std::span<const ProgramEntry> all() const SIVRAY_NONBLOCKING {
    return table ? shared : std::span<const ProgramEntry>(own);
  }

  /// The entries as a private list of this program.
  std::vector<ProgramEntry>& changeable();

 private:
  std::shared_ptr<const EntryTable> table;  ///< Null once the entries are in `own`.
  std::span<const ProgramEntry> shared;     ///< A range of `table`.
  std::vector<ProgramEntry> own;
};

}  // namespace tesh::vimo
