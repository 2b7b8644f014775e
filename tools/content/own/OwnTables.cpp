// Spreads the factory's records and inserts those of own sounds between them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/OwnTables.h"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <utility>

#include "core/LittleEndian.h"
#include "engine/samples/IndexRecords.h"
#include "engine/samples/SivraySampleLibrary.h"

namespace sivray::content {
namespace {

using tesh::bramel::plugin::sivray::kSampleRecordBytes;
using tesh::bramel::plugin::sivray::kWaveNameBytes;
using tesh::bramel::plugin::sivray::kWaveRecordBytes;
using tesh::cofu::core::ByteReader;
using tesh::cofu::core::ByteWriter;
using Record = std::span<const std::uint8_t>;

constexpr std::uint32_t kMonoType = 1;
constexpr std::uint32_t kStereoType = 2;
constexpr std::size_t kOwnBetween = kNumbersPerFactoryWave - 1;

Record recordAt(const std::vector<std::uint8_t>& bytes, std::size_t index, std::size_t size) {
  return Record(bytes).subspan(index * size, size);
}

void putName(ByteWriter& writer, const std::string& name) {
  writer.text(name);
  writer.zeros(kWaveNameBytes - name.size());
}

/// Returns the factory wave with the nearest number.
std::int32_t nearestWave(std::int32_t number) { return (number + kNumbersPerFactoryWave / 2) / kNumbersPerFactoryWave; }

}  // namespace

OwnTables::OwnTables(IndexFiles given) : source(std::move(given)) {
  tesh::vimo::SivraySampleLibrary library;
  library.loadFrom(source.categories);
  const std::size_t records = source.waves.size() / kWaveRecordBytes;
  const std::int32_t distance = library.numbersPerFactoryWave();
  isOwn = distance != 1;
  const bool isWhole = records > 1 && source.waves.size() == source.categories.size() &&
                       source.waves.size() % kWaveRecordBytes == 0 && source.samples.size() % kSampleRecordBytes == 0;
  if (!isWhole || (isOwn && distance != kNumbersPerFactoryWave) ||
      (records - 1) % static_cast<std::size_t>(distance) != 0) {
    throw std::runtime_error("its index files do not belong together");
  }
  waveCount = static_cast<std::int32_t>((records - 1) / static_cast<std::size_t>(distance)) + 1;
  const std::size_t ownBytes =
      isOwn ? 2 * kOwnBetween * static_cast<std::size_t>(waveCount - 1) * kSampleRecordBytes : 0;
  if (source.samples.size() < ownBytes) {
    throw std::runtime_error("sampleparam.bin is cut short");
  }
  factorySampleBytes = source.samples.size() - ownBytes;
  for (std::int32_t wave = 0; wave < waveCount; ++wave) {
    ByteReader reader(recordAt(source.waves, indexOf(wave), kWaveRecordBytes));
    reader.word();
    names.emplace_back(reader.text(kWaveNameBytes));
  }
}

/// Returns the index of a factory wave's record.
std::size_t OwnTables::indexOf(std::int32_t wave) const {
  return static_cast<std::size_t>(wave) * (isOwn ? std::size_t{kNumbersPerFactoryWave} : 1);
}

int OwnTables::factoryCategory(std::int32_t wave) const {
  return static_cast<int>(ByteReader(recordAt(source.categories, indexOf(wave), kWaveRecordBytes)).word()) - 1;
}

OwnStretch OwnTables::factoryStretch(std::int32_t wave) const {
  ByteReader reader(recordAt(source.waves, indexOf(wave), kWaveRecordBytes));
  const bool isMono = reader.word() == kMonoType;
  reader.text(kWaveNameBytes);
  const std::size_t left = reader.word();
  const std::size_t right = reader.word();
  return stretchAt(left, isMono ? left : right);
}

OwnStretch OwnTables::stretchAt(std::size_t left, std::size_t right) const {
  if (std::max(left, right) >= source.samples.size() / kSampleRecordBytes) {
    return {};
  }
  ByteReader reader(recordAt(source.samples, left, kSampleRecordBytes));
  OwnStretch stretch;
  stretch.left = reader.word();
  const std::uint32_t end = reader.word();
  stretch.rate = reader.word();
  stretch.right = ByteReader(recordAt(source.samples, right, kSampleRecordBytes)).word();
  stretch.frames = stretch.rate == 0 || end < stretch.left ? 0 : end - stretch.left + 1;
  return stretch;
}

/// Returns the index of the first of an own number's two records.
std::size_t OwnTables::sampleRecordOf(std::int32_t number) const {
  const auto slot = static_cast<std::size_t>(number / kNumbersPerFactoryWave) * kOwnBetween +
                    static_cast<std::size_t>(number % kNumbersPerFactoryWave) - 1;
  return factorySampleBytes / kSampleRecordBytes + 2 * slot;
}

IndexFiles OwnTables::files(const Ledger& ledger, const OwnStretches& stretches) const {
  std::map<std::int32_t, const OwnSound*> sounds;
  for (const OwnSound& sound : ledger.sounds) {
    sounds[sound.number] = &sound;
  }
  IndexFiles made;
  ByteWriter samples(made.samples);
  ByteWriter waves(made.waves);
  ByteWriter categories(made.categories);
  samples.bytes(Record(source.samples).first(factorySampleBytes));
  const auto distance = static_cast<std::size_t>(isOwn ? kNumbersPerFactoryWave : 1);
  for (std::int32_t number = 0; number < numbers(); ++number) {
    const auto factoryRecord = [&](const std::vector<std::uint8_t>& bytes, std::int32_t wave) {
      return recordAt(bytes, static_cast<std::size_t>(wave) * distance, kWaveRecordBytes);
    };
    if (number % kNumbersPerFactoryWave == 0) {
      waves.bytes(factoryRecord(source.waves, number / kNumbersPerFactoryWave));
      categories.bytes(factoryRecord(source.categories, number / kNumbersPerFactoryWave));
      continue;
    }
    const auto found = sounds.find(number);
    if (found == sounds.end() || found->second->isRemoved()) {
      const std::int32_t wave = found == sounds.end() ? nearestWave(number) : found->second->standIn;
      waves.bytes(factoryRecord(source.waves, wave));
      categories.word(0);
      putName(categories, factoryName(wave));
      samples.zeros(2 * kSampleRecordBytes);
    } else {
      const OwnSound& sound = *found->second;
      const OwnStretch& stretch = stretches.at(number);
      const auto record = static_cast<std::uint32_t>(sampleRecordOf(number));
      waves.word(stretch.isStereo() ? kStereoType : kMonoType);
      putName(waves, sound.name);
      waves.word(record);
      waves.word(record + 1);
      categories.word(static_cast<std::uint32_t>(sound.category) + 1);
      putName(categories, sound.name);
      for (const std::uint32_t start : {stretch.left, stretch.right}) {
        samples.word(start);
        samples.word(start + stretch.frames - 1);
        samples.word(stretch.rate);
      }
    }
    categories.word(kNumbersPerFactoryWave);
    categories.word(0);
  }
  return made;
}

OwnStretches OwnTables::stretches() const {
  OwnStretches found;
  for (std::int32_t number = 0; isOwn && number < numbers(); ++number) {
    const std::size_t record = number % kNumbersPerFactoryWave == 0 ? 0 : sampleRecordOf(number);
    const OwnStretch stretch = record == 0 ? OwnStretch{} : stretchAt(record, record + 1);
    if (stretch.frames > 0) {
      found.emplace(number, stretch);
    }
  }
  return found;
}

std::vector<OwnSound> OwnTables::listed() const {
  std::vector<OwnSound> sounds;
  for (std::int32_t number = 0; isOwn && number < numbers(); ++number) {
    ByteReader reader(recordAt(source.categories, static_cast<std::size_t>(number), kWaveRecordBytes));
    const int category = static_cast<int>(reader.word()) - 1;
    std::string name(reader.text(kWaveNameBytes));
    const bool isKnown = category >= 0 && category < static_cast<int>(kCategoryNames.size()) && !name.empty();
    if (number % kNumbersPerFactoryWave != 0 && isKnown) {
      OwnSound& sound = sounds.emplace_back();
      sound.number = number;
      sound.category = category;
      sound.name = std::move(name);
    }
  }
  return sounds;
}

}  // namespace sivray::content
