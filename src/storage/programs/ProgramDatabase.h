// An ordered list of programs, and its image in files: four versions are read, the newest is written.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/RealTime.h"
#include "storage/programs/MacroProgramDatabaseDelegate.h"
#include "storage/programs/ProgramRecord.h"

namespace tesh::vimo {

/// All operations under the lock of the owner. A record's place in the list is its program number.
class ProgramDatabase {
 public:
  static constexpr std::uint32_t kImageVersion = 1024;
  static constexpr std::size_t kImageHeadBytes = 8;
  static constexpr std::size_t kRecordHeadBytes = 224;
  static constexpr std::size_t kEntryBytes = 12;

  /// How many times its own size an image may take, in memory and when it is saved, beside the records of today's size
  /// that its bytes could hold. The oldest images with all of today's macros take a quarter of that.
  static constexpr std::uint64_t kMostGrowth = 16;
  /// Programs that are read from any image, however short its records are.
  static constexpr std::uint64_t kAlwaysRead = 8;

  /// `owner` must outlive the database.
  explicit ProgramDatabase(const MacroProgramDatabaseDelegate& owner) : delegate(owner) {}

  /// Whether an image replaces the present records or follows them.
  enum class Mode { replace, append };

  /// Reads an image whose records hold `imageMacroCount` macros each, and returns the number of records read. An
  /// unknown version changes nothing. An image of the newest version must have exactly the size that its count needs,
  /// or none of its records is read; of an older one all records are read that are there as a whole. Records of a few
  /// bytes cannot fill the memory: past kMostGrowth times the image's size they are left out.
  std::size_t load(std::span<const std::uint8_t> image, std::uint64_t imageMacroCount, Mode mode);

  /// Appends an image of byteSize() bytes to `out`.
  void save(std::vector<std::uint8_t>& out) const;
  std::size_t byteSize() const { return imageBytes(records.size(), macroCount()); }
  /// Bytes of an image of the newest version.
  static constexpr std::size_t imageBytes(std::size_t programs, std::size_t macros) {
    return programs * (kRecordHeadBytes + kEntryBytes * macros) + kImageHeadBytes;
  }

  /// Cuts or zero-extends the entries of all records.
  void setMacroCount(std::size_t count);
  std::size_t macroCount() const { return static_cast<std::size_t>(macrosPerRecord); }

  /// Gives every record this value for a macro; nothing when `macro` lies past the macro count.
  void fillMacro(std::uint64_t macro, float value);

  /// Stores the owner's current state as a new last record.
  void appendFromDelegate();
  /// Stores the owner's current state into a record, which keeps its id and marker.
  void overwriteFromDelegate(std::uint64_t index);

  /// Moves the records of `other` behind those that are here. The entries keep their number.
  void takeAll(ProgramDatabase& other);

  /// Takes the record out and closes the gap.
  void remove(std::uint64_t index);
  /// Puts the record at `to`; those in between shift by one.
  void move(std::uint64_t from, std::uint64_t to);

  std::size_t programCount() const { return records.size(); }

  /// The record, or null out of range.
  const ProgramRecord* record(std::uint64_t index) const SIVRAY_NONBLOCKING;
  /// Out of range: empty, or 0.
  std::string name(std::uint64_t index) const;
  std::string comment(std::uint64_t index) const;
  std::uint32_t time(std::uint64_t index) const;
  std::span<const ProgramEntry> entries(std::uint64_t index) const;

 private:
  void storeInto(ProgramRecord& record) const;
  std::uint64_t recordsIn(std::span<const std::uint8_t> image, std::uint32_t version, std::uint64_t recordBytes) const;
  std::uint64_t mostRecords(std::uint64_t imageBytes) const;

  const MacroProgramDatabaseDelegate& delegate;
  std::vector<std::unique_ptr<ProgramRecord>> records;
  std::uint64_t macrosPerRecord = 0;
};

}  // namespace tesh::vimo
