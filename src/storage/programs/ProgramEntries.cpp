// The tables that programs share.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/ProgramEntries.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <mutex>
#include <utility>

#include "core/LittleEndian.h"

namespace tesh::vimo {
namespace {

EntryTable tableOf(std::span<const std::uint8_t> bytes, const EntryLayout& layout) {
  EntryTable table;
  table.reserve(layout.records * layout.entriesOfRecord);
  cofu::core::ByteReader reader(bytes);
  for (std::size_t record = 0; record < layout.records; ++record) {
    reader.take(layout.headBytes);
    for (std::size_t i = 0; i < layout.entriesOfRecord; ++i) {
      const float value = reader.real();
      table.push_back({value, layout.hasObjects ? reader.longWord() : 0});
    }
  }
  return table;
}

/// Compares bits, because zero has a sign and NaN does not equal itself. Each record is compared completely before a
/// difference ends the comparison, which is faster if there is none.
bool isTableOf(const EntryTable& table, std::span<const std::uint8_t> bytes, const EntryLayout& layout) {
  constexpr std::size_t kValueBytes = sizeof(float);
  const std::size_t entryBytes = kValueBytes + (layout.hasObjects ? sizeof(std::uint64_t) : 0);
  const std::size_t recordBytes = layout.headBytes + layout.entriesOfRecord * entryBytes;
  if (table.size() != layout.records * layout.entriesOfRecord || bytes.size() < layout.records * recordBytes) {
    return false;
  }
  const ProgramEntry* held = table.data();
  for (std::size_t record = 0; record < layout.records; ++record) {
    const std::uint8_t* entry = bytes.data() + record * recordBytes + layout.headBytes;
    std::uint64_t difference = 0;
    for (std::size_t i = 0; i < layout.entriesOfRecord; ++i, ++held, entry += entryBytes) {
      std::uint32_t value = 0;
      std::uint64_t object = 0;
      std::memcpy(&value, entry, kValueBytes);
      if (layout.hasObjects) {
        std::memcpy(&object, entry + kValueBytes, sizeof(object));
      }
      difference |= (std::bit_cast<std::uint32_t>(held->value) ^ value) | (held->object ^ object);
    }
    if (difference != 0) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::shared_ptr<const EntryTable> sharedTable(std::span<const std::uint8_t> bytes, const EntryLayout& layout) {
  static std::mutex mutex;
  static std::vector<std::weak_ptr<const EntryTable>> known;
  const std::lock_guard lock(mutex);
  std::erase_if(known, [](const auto& table) { return table.expired(); });
  for (const auto& table : known) {
    auto held = table.lock();
    if (held && isTableOf(*held, bytes, layout)) {
      return held;
    }
  }
  auto made = std::make_shared<const EntryTable>(tableOf(bytes, layout));
  known.push_back(made);
  return made;
}

ProgramEntries::ProgramEntries(std::shared_ptr<const EntryTable> entryTable, std::size_t first, std::size_t count)
    : table(std::move(entryTable)), shared(std::span(*table).subspan(first, count)) {}

std::vector<ProgramEntry>& ProgramEntries::changeable() {
  if (table) {
    own.assign(shared.begin(), shared.end());
    table.reset();
  }
  return own;
}

}  // namespace tesh::vimo
