// Reads and sorts the category file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/SivraySampleLibrary.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "core/LittleEndian.h"
#include "core/SharedByBytes.h"
#include "engine/samples/IndexRecords.h"
#include "storage/paths/Paths.h"

namespace tesh::vimo {

namespace sivray = bramel::plugin::sivray;

namespace {

/// The distance of the factory waves' numbers, if every record between them states it and no other record does. An
/// index without categories has other values in these words.
std::int32_t distanceIn(std::span<const std::uint32_t> words) {
  const std::uint32_t told = words.size() > 1 ? words[1] : 0;
  if (told < 2 || told > sivray::kMostNumbersPerFactoryWave) {
    return 1;
  }
  for (std::size_t id = 0; id < words.size(); ++id) {
    if (words[id] != (id % told == 0 ? 0 : told)) {
      return 1;
    }
  }
  return static_cast<std::int32_t>(told);
}

}  // namespace

bool SivraySampleLibrary::load(const std::string& path) {
  if (!bramel::fileExists(path) || !loadFrom(bramel::readFile(path))) {
    return false;
  }
  indexPath = path;
  similar.reset();
  return true;
}

const SimilarWaves& SivraySampleLibrary::similarWaves() const {
  if (!similar) {
    similar.emplace();
    const std::size_t end = indexPath.find_last_of("/\\");
    const std::string folder = end == std::string::npos ? std::string() : indexPath.substr(0, end + 1);
    similar->loadFrom(bramel::readFile(folder + std::string(SimilarWaves::kFileName)), bramel::readFile(indexPath));
  }
  return *similar;
}

bool SivraySampleLibrary::loadFrom(std::span<const std::uint8_t> records) {
  static cofu::core::SharedByBytes<Content> shared;
  if (records.empty()) {
    return false;
  }
  content = shared.get(records, contentOf);
  return true;
}

SivraySampleLibrary::Content SivraySampleLibrary::contentOf(std::span<const std::uint8_t> records) {
  Content content;
  auto& [entries, numbers, distance, sizes, categories] = content;
  std::vector<std::string> namesOfFree;  // By id; empty for numbers that have an entry.
  std::vector<std::uint32_t> distances;
  std::int32_t id = 0;
  for (; records.size() >= sivray::kWaveRecordBytes; records = records.subspan(sivray::kWaveRecordBytes), ++id) {
    cofu::core::ByteReader reader(records);
    const std::uint32_t category = reader.word();
    std::string name(reader.text(sivray::kWaveNameBytes));
    numbers.push_back({.isFree = category == 0});
    namesOfFree.push_back(category == 0 ? name : std::string());
    distances.push_back(reader.word());
    if (category >= 1 && category <= kMaxCategories) {
      entries.push_back({id, static_cast<std::int32_t>(category) - 1, std::move(name)});
    }
  }
  std::stable_sort(entries.begin(), entries.end(),
                   [](const Entry& a, const Entry& b) { return a.category < b.category; });
  for (const Entry& entry : entries) {
    ++sizes[static_cast<std::size_t>(entry.category)];
  }
  categories = entries.empty() ? 0 : static_cast<std::uint32_t>(entries.back().category) + 1;
  numberEntries(content, namesOfFree);
  distance = distanceIn(distances);
  return content;
}

void SivraySampleLibrary::numberEntries(Content& content, const std::vector<std::string>& namesOfFree) {
  std::unordered_map<std::string_view, std::int32_t> places;
  auto& numbers = content.numbers;
  // Backwards, so that the first of several entries with one name counts.
  for (std::size_t place = content.entries.size(); place-- > 0;) {
    const Entry& entry = content.entries[place];
    numbers[static_cast<std::size_t>(entry.id)].flatIndex = static_cast<std::int32_t>(place);
    places[entry.name] = static_cast<std::int32_t>(place);
  }
  for (std::size_t id = 0; id < numbers.size(); ++id) {
    const auto found = numbers[id].isFree ? places.find(namesOfFree[id]) : places.end();
    if (found != places.end()) {
      numbers[id].flatIndex = found->second;
    }
  }
}

const SivraySampleLibrary::Number* SivraySampleLibrary::numberAt(std::int32_t id) const {
  return id >= 0 && id < numberCount() ? &content->numbers[static_cast<std::size_t>(id)] : nullptr;
}

bool SivraySampleLibrary::isFree(std::int32_t id) const {
  const Number* const number = numberAt(id);
  return number != nullptr && number->isFree;
}

std::int32_t SivraySampleLibrary::categorySize(std::int32_t category) const {
  const bool known = category >= 0 && category < static_cast<std::int32_t>(kMaxCategories);
  return known ? static_cast<std::int32_t>(content->sizes[static_cast<std::size_t>(category)]) : 0;
}

std::int32_t SivraySampleLibrary::waveCount() const { return static_cast<std::int32_t>(content->entries.size()); }

const SivraySampleLibrary::Entry* SivraySampleLibrary::entryAt(std::int32_t flatIndex) const {
  return flatIndex >= 0 && flatIndex < waveCount() ? &content->entries[static_cast<std::size_t>(flatIndex)] : nullptr;
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
  const Number* const number = numberAt(id);
  return number == nullptr ? 0 : number->flatIndex;
}

}  // namespace tesh::vimo
