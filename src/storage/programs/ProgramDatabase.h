// An ordered list of programs, and its image, which is the format in files and states. Reads four versions of the image
// and writes the newest.
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

/// A record's position in the list is its program number. One call at a time, except for reads. Ignores programs out of
/// range.
class ProgramDatabase {
 public:
  static constexpr std::uint32_t kImageVersion = 1024;
  static constexpr std::size_t kImageHeadBytes = 8;
  static constexpr std::size_t kRecordHeadBytes = 224;
  static constexpr std::size_t kEntryBytes = 12;

  /// Limit of memory: an image may grow to this many times its size, in memory and when it is saved, plus as many
  /// records of the current size as its bytes could hold. An image of the oldest version with all current macros grows
  /// to a quarter of that.
  static constexpr std::uint64_t kMostGrowth = 16;
  /// So many records are read from any image, however short they are.
  static constexpr std::uint64_t kAlwaysRead = 8;

  /// `owner` must outlive the database.
  explicit ProgramDatabase(const MacroProgramDatabaseDelegate& owner) : delegate(owner) {}

  /// Whether the image's records replace the present ones or are appended.
  enum class Mode { replace, append };

  /// Reads an image whose records hold `imageMacroCount` macros each, and returns the number of records read. Ignores
  /// an image of an unknown version. Reads nothing from an image of the newest version whose size does not exactly
  /// match its count; from older versions it reads every complete record. Records past the limit of kMostGrowth are
  /// left out, so that a file of very short records cannot fill the memory.
  std::size_t load(std::span<const std::uint8_t> image, std::uint64_t imageMacroCount, Mode mode);

  /// Appends an image of the newest version, of byteSize() bytes, to `out`.
  void save(std::vector<std::uint8_t>& out) const;
  std::size_t byteSize() const { return imageBytes(records.size(), macroCount()); }
  /// Bytes of an image of the newest version.
  static constexpr std::size_t imageBytes(std::size_t programs, std::size_t macros) {
    return programs * (kRecordHeadBytes + kEntryBytes * macros) + kImageHeadBytes;
  }

  /// Sets the number of entries of all records; new ones are zero. Fast if all records already have it.
  void setMacroCount(std::size_t count);
  std::size_t macroCount() const { return static_cast<std::size_t>(macrosPerRecord); }

  /// In up to `count` records from `fromRecord` on, sets the macros from `first` on to these values; values past the
  /// macro count are ignored.
  void fillMacros(std::uint64_t first, std::span<const float> values, std::size_t fromRecord, std::size_t count);

  /// Stores the owner's current state as a new last record.
  void appendFromDelegate();
  /// Replaces a record by the owner's current state, except its id and marker.
  void overwriteFromDelegate(std::uint64_t index);

  /// Appends all records of `other`, which keep their numbers of entries.
  void takeAll(ProgramDatabase& other);

  /// Removes a record; later ones move up by one.
  void remove(std::uint64_t index);
  /// As above, for each record whose flag is set. There must be a flag for every record.
  void removeAll(const std::vector<bool>& isRemoved);
  /// Moves a record to position `to`; those in between move by one.
  void move(std::uint64_t from, std::uint64_t to);

  std::size_t programCount() const { return records.size(); }

  /// Null if the index is out of range.
  const ProgramRecord* record(std::uint64_t index) const SIVRAY_NONBLOCKING;
  /// Empty, or 0, if the index is out of range.
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
  bool isEven = true;  ///< Every record has `macrosPerRecord` entries.
};

}  // namespace tesh::vimo
