// How the category file is read and sorted.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/SivraySampleLibrary.h"

#include <algorithm>

#include "core/LittleEndian.h"
#include "engine/samples/IndexRecords.h"
#include "storage/paths/Paths.h"

namespace tesh::vimo {

namespace sivray = bramel::plugin::sivray;

bool SivraySampleLibrary::load(const std::string& path) {
  return bramel::fileExists(path) && loadFrom(bramel::readFile(path));
}

bool SivraySampleLibrary::loadFrom(std::span<const std::uint8_t> records) {
  if (records.empty()) {
    return false;
  }
  std::int32_t id = 0;
  for (; records.size() >= sivray::kWaveRecordBytes; records = records.subspan(sivray::kWaveRecordBytes), ++id) {
    cofu::core::ByteReader reader(records);
    const std::uint32_t category = reader.word();
    if (category >= 1 && category <= kMaxCategories) {
      entries.push_back(
          {id, static_cast<std::int32_t>(category) - 1, std::string(reader.text(sivray::kWaveNameBytes))});
    }
  }
  std::stable_sort(entries.begin(), entries.end(),
                   [](const Entry& a, const Entry& b) { return a.category < b.category; });
  sizes.fill(0);
  for (const Entry& entry : entries) {
    ++sizes[static_cast<std::size_t>(entry.category)];
  }
  categories = entries.empty() ? 0 : static_cast<std::uint32_t>(entries.back().category) + 1;
  return true;
}

std::int32_t SivraySampleLibrary::categorySize(std::int32_t category) const {
  const bool known = category >= 0 && category < static_cast<std::int32_t>(kMaxCategories);
  return known ? static_cast<std::int32_t>(sizes[static_cast<std::size_t>(category)]) : 0;
}

std::int32_t SivraySampleLibrary::waveCount() const { return static_cast<std::int32_t>(entries.size()); }

const SivraySampleLibrary::Entry* SivraySampleLibrary::entryAt(std::int32_t flatIndex) const {
  return flatIndex >= 0 && flatIndex < waveCount() ? &entries[static_cast<std::size_t>(flatIndex)] : nullptr;
}

std::string SivraySampleLibrary::waveName(std::int32_t flatIndex) const {
  const Entry* entry = entryAt(flatIndex);
  return entry == nullptr ? std::string{} : entry->name;
}

std::int32_t SivraySampleLibrary::waveCategory(std::int32_t flatIndex) const {
  const Entry* entry = entryAt(flatIndex);
  return entry == nullptr ? 0 : entry->category;
}

std::int32_t SivraySampleLibrary::waveId(std::int32_t flatIndex) const {
  const Entry* entry = entryAt(flatIndex);
  return entry == nullptr ? 0 : entry->id;
}

std::int32_t SivraySampleLibrary::flatIndexOf(std::int32_t id) const {
  const auto found = std::find_if(entries.begin(), entries.end(), [id](const Entry& entry) { return entry.id == id; });
  return found == entries.end() ? 0 : static_cast<std::int32_t>(found - entries.begin());
}

}  // namespace tesh::vimo
