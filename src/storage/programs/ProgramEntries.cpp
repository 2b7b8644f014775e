// The tables that programs share.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/ProgramEntries.h"

#include <algorithm>
#include <bit>
#include <mutex>
#include <utility>

#include "core/LittleEndian.h"

namespace tesh::vimo {
namespace {

/// Calls `visit` with each entry in turn, until it returns false. Returns whether it never did.
template <typename Visit>
bool visitEntries(std::span<const std::uint8_t> bytes, const EntryLayout& layout, Visit visit) {
  cofu::core::ByteReader reader(bytes);
  for (std::size_t record = 0; record < layout.records; ++record) {
    reader.take(layout.headBytes);
    for (std::size_t i = 0; i < layout.entriesOfRecord; ++i) {
      const float value = reader.real();
      if (!visit(ProgramEntry{value, layout.hasObjects ? reader.longWord() : 0})) {
        return false;
      }
    }
  }
  return true;
}

/// Compares bits, as a zero has a sign and not every float equals itself.
bool isTableOf(const EntryTable& table, std::span<const std::uint8_t> bytes, const EntryLayout& layout) {
  if (table.size() != layout.records * layout.entriesOfRecord) {
    return false;
  }
  auto next = table.begin();
  return visitEntries(bytes, layout, [&next](const ProgramEntry& entry) {
    const ProgramEntry& held = *next++;
    return std::bit_cast<std::uint32_t>(held.value) == std::bit_cast<std::uint32_t>(entry.value) &&
           held.object == entry.object;
  });
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
  auto made = std::make_shared<EntryTable>();
  made->reserve(layout.records * layout.entriesOfRecord);
  visitEntries(bytes, layout, [&made](const ProgramEntry& entry) {
    made->push_back(entry);
    return true;
  });
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
