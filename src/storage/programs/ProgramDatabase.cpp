// Reads and writes images, and changes the list.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/ProgramDatabase.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "core/LittleEndian.h"

namespace tesh::vimo {
namespace {

using cofu::core::ByteReader;
using cofu::core::ByteWriter;

constexpr std::uint32_t kValuesOnly = 256;  // Values as floats, nothing else.
constexpr std::uint32_t kNamed = 512;       // With name, comment and time, but without an id.
constexpr std::uint32_t kWithId = 768;      // Like the newest version, but without objects.

/// Bytes of a named record: marker, two texts and time, then 8 bytes that are ignored.
constexpr std::uint64_t kNamedHeadBytes = 200 + 8;

/// Bytes of a record before its entries.
std::uint64_t headBytes(std::uint32_t version) {
  switch (version) {
    case kValuesOnly:
      return 0;
    case kNamed:
      return kNamedHeadBytes;
    default:
      return ProgramDatabase::kRecordHeadBytes;
  }
}

std::uint64_t entryBytes(std::uint32_t version) {
  return version == ProgramDatabase::kImageVersion ? ProgramDatabase::kEntryBytes : sizeof(float);
}

bool isKnown(std::uint32_t version) {
  return version == kValuesOnly || version == kNamed || version == kWithId || version == ProgramDatabase::kImageVersion;
}

void readHead(ProgramRecord& record, ByteReader& reader, std::uint32_t version, std::size_t number) {
  if (version == kValuesOnly) {
    ProgramRecord::setText(record.name, std::to_string(number));
    ProgramRecord::setText(record.comment, "TESH");
    return;
  }
  reader.word();
  ProgramRecord::setText(record.name, reader.text(ProgramRecord::kTextBytes));
  ProgramRecord::setText(record.comment, reader.text(ProgramRecord::kTextBytes));
  record.time = reader.word();
  reader.take(headBytes(version) - 200);
}

}  // namespace

std::size_t ProgramDatabase::load(std::span<const std::uint8_t> image, std::uint64_t imageMacroCount, Mode mode) {
  isEven = isEven && (records.empty() || imageMacroCount == macrosPerRecord);
  macrosPerRecord = imageMacroCount;
  const std::uint32_t version = cofu::core::wordIn(image, 0).value_or(0);
  if (!isKnown(version)) {
    return 0;
  }
  if (mode == Mode::replace) {
    records.clear();
    isEven = true;
  }
  const std::uint64_t recordBytes = headBytes(version) + entryBytes(version) * imageMacroCount;
  const std::uint64_t count = std::min(recordsIn(image, version, recordBytes), mostRecords(image.size()));
  const auto bytes = cofu::core::bytesAt(image, kImageHeadBytes);
  const auto table = sharedTable(bytes, {static_cast<std::size_t>(count), static_cast<std::size_t>(headBytes(version)),
                                         macroCount(), version == kImageVersion});
  ByteReader reader(bytes);
  for (std::size_t i = 0; i < count; ++i) {
    auto record = std::make_unique<ProgramRecord>(ProgramEntries(table, i * macroCount(), macroCount()));
    record->marker = ProgramRecord::kMarkerLoaded;
    readHead(*record, reader, version, i);
    reader.take(entryBytes(version) * macroCount());
    records.push_back(std::move(record));
  }
  return static_cast<std::size_t>(count);
}

/// The number of records that kMostGrowth allows, by their size in memory, which is larger than in an image.
std::uint64_t ProgramDatabase::mostRecords(std::uint64_t imageBytes) const {
  const std::uint64_t macros = std::max(macrosPerRecord, delegate.macroCount());
  const std::uint64_t saved = kRecordHeadBytes + kEntryBytes * delegate.macroCount();
  const std::uint64_t held = sizeof(ProgramRecord) + sizeof(records.front()) + sizeof(ProgramEntry) * macros;
  return std::max((kMostGrowth * imageBytes + imageBytes / saved * saved) / held, kAlwaysRead);
}

/// The number of whole records in the image. For the newest version 0, unless the size is exactly right.
std::uint64_t ProgramDatabase::recordsIn(std::span<const std::uint8_t> image, std::uint32_t version,
                                         std::uint64_t recordBytes) const {
  if (image.size() < kImageHeadBytes || recordBytes == 0) {
    return 0;
  }
  const std::uint64_t claimed = *cofu::core::wordIn(image, 4);
  const std::uint64_t bytes = image.size() - kImageHeadBytes;
  const std::uint64_t held = bytes / recordBytes;
  if (version == kImageVersion) {
    return claimed == held && bytes % recordBytes == 0 ? claimed : 0;
  }
  if (version == kNamed) {
    if (claimed != held) {
      std::fputs("program database : # num programs did not match the number we expected...\n", stderr);
    }
    return held;
  }
  return std::min(claimed, held);
}

void ProgramDatabase::save(std::vector<std::uint8_t>& out) const {
  out.reserve(out.size() + byteSize());
  ByteWriter writer(out);
  writer.word(kImageVersion);
  writer.word(static_cast<std::uint32_t>(records.size()));
  for (const auto& record : records) {
    writer.word(record->marker);
    writer.text({record->name.data(), record->name.size()});
    writer.text({record->comment.data(), record->comment.size()});
    writer.word(record->time);
    writer.longWord(0);
    writer.bytes(record->id);
    const auto held = record->entries.all();
    for (std::size_t i = 0; i < macroCount(); ++i) {
      const ProgramEntry entry = i < held.size() ? held[i] : ProgramEntry{};
      writer.real(entry.value);
      writer.longWord(entry.object);
    }
  }
}

void ProgramDatabase::setMacroCount(std::size_t count) {
  if (isEven && count == macrosPerRecord) {
    return;
  }
  isEven = true;
  macrosPerRecord = count;
  for (const auto& record : records) {
    record->entries.changeable().resize(count);
  }
}

void ProgramDatabase::fillMacros(std::uint64_t first, std::span<const float> values, std::size_t fromRecord,
                                 std::size_t count) {
  if (values.empty()) {
    return;
  }
  const std::size_t from = std::min(fromRecord, records.size());
  for (const auto& record : std::span(records).subspan(from, std::min(count, records.size() - from))) {
    auto& entries = record->entries.changeable();
    for (std::size_t i = 0; i < values.size() && first + i < entries.size(); ++i) {
      entries[static_cast<std::size_t>(first) + i] = {values[i], 0};
    }
  }
}

void ProgramDatabase::appendFromDelegate() {
  auto record = std::make_unique<ProgramRecord>(ProgramEntries(macroCount()));
  storeInto(*record);
  records.push_back(std::move(record));
}

void ProgramDatabase::overwriteFromDelegate(std::uint64_t index) {
  if (index < records.size()) {
    storeInto(*records[static_cast<std::size_t>(index)]);
  }
}

void ProgramDatabase::storeInto(ProgramRecord& record) const {
  ProgramRecord::setText(record.name, delegate.programName());
  ProgramRecord::setText(record.comment, delegate.programComment());
  record.time = delegate.programTime();
  auto& entries = record.entries.changeable();
  entries.resize(macroCount());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    entries[i] = {delegate.macroValue(i), delegate.macroObject(i)};
  }
}

void ProgramDatabase::takeAll(ProgramDatabase& other) {
  isEven = isEven && other.isEven && macrosPerRecord == other.macrosPerRecord;
  records.insert(records.end(), std::move_iterator(other.records.begin()), std::move_iterator(other.records.end()));
  other.records.clear();
}

void ProgramDatabase::remove(std::uint64_t index) {
  if (index < records.size()) {
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(index));
  }
}

void ProgramDatabase::removeAll(const std::vector<bool>& isRemoved) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (!isRemoved[i]) {
      records[kept++] = std::move(records[i]);
    }
  }
  records.resize(kept);
}

void ProgramDatabase::move(std::uint64_t from, std::uint64_t to) {
  if (from >= records.size() || to >= records.size()) {
    return;
  }
  const auto source = records.begin() + static_cast<std::ptrdiff_t>(from);
  const auto target = records.begin() + static_cast<std::ptrdiff_t>(to);
  if (from < to) {
    std::rotate(source, source + 1, target + 1);
  } else {
    std::rotate(target, source, source + 1);
  }
}

const ProgramRecord* ProgramDatabase::record(std::uint64_t index) const {
  return index < records.size() ? records[static_cast<std::size_t>(index)].get() : nullptr;
}

std::string ProgramDatabase::name(std::uint64_t index) const {
  const ProgramRecord* found = record(index);
  return found ? std::string(ProgramRecord::textOf(found->name)) : std::string();
}

std::string ProgramDatabase::comment(std::uint64_t index) const {
  const ProgramRecord* found = record(index);
  return found ? std::string(ProgramRecord::textOf(found->comment)) : std::string();
}

std::uint32_t ProgramDatabase::time(std::uint64_t index) const {
  const ProgramRecord* found = record(index);
  return found ? found->time : 0;
}

std::span<const ProgramEntry> ProgramDatabase::entries(std::uint64_t index) const {
  const ProgramRecord* found = record(index);
  return found ? found->entries.all() : std::span<const ProgramEntry>();
}

}  // namespace tesh::vimo
