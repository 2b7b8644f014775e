// Reads the index files and looks up waves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/WaveDatabase.h"

#include "core/EngineRate.h"
#include "core/LittleEndian.h"
#include "core/SharedByBytes.h"
#include "engine/samples/IndexRecords.h"
#include "storage/paths/Paths.h"

namespace tesh::bramel::plugin::sivray {

namespace {

using cofu::core::ByteReader;

constexpr std::uint32_t kMono = 1;
constexpr std::uint32_t kStereo = 2;

/// A wave with rate 0 could not be played, so it gets the engine's rate.
float playableRate(std::uint32_t rate) { return static_cast<float>(rate == 0 ? cofu::core::kEngineRate : rate); }

}  // namespace

WaveDatabase::WaveDatabase(std::string_view folderName) : folder(folderName) {}

void WaveDatabase::load() {
  const std::string base = pathBelow(directoryFor("kBramelDirectory_Resource"), folder);
  const std::string samplePath = pathBelow(base, "sampleparam.bin");
  const std::string wavePath = pathBelow(base, "drumparam.bin");
  const auto sampleBytes = fileExists(samplePath) ? readFile(samplePath) : std::vector<std::uint8_t>{};
  const auto waveBytes = fileExists(wavePath) ? readFile(wavePath) : std::vector<std::uint8_t>{};
  loadFrom(sampleBytes, waveBytes);
}

void WaveDatabase::loadFrom(std::span<const std::uint8_t> sampleRecords, std::span<const std::uint8_t> waveRecords) {
  static cofu::core::SharedByBytes<Samples> sharedSamples;
  static cofu::core::SharedByBytes<Waves> sharedWaves;
  samples = sharedSamples.get(sampleRecords, samplesOf);
  waves = sharedWaves.get(waveRecords, wavesOf);
  loaded = true;
}

WaveDatabase::Samples WaveDatabase::samplesOf(std::span<const std::uint8_t> records) {
  Samples samples;
  samples.reserve(records.size() / kSampleRecordBytes);
  for (ByteReader reader(records); reader.remaining() >= kSampleRecordBytes;) {
    samples.push_back({reader.word(), reader.word(), reader.word()});
  }
  return samples;
}

WaveDatabase::Waves WaveDatabase::wavesOf(std::span<const std::uint8_t> records) {
  Waves waves;
  waves.reserve(records.size() / kWaveRecordBytes);
  for (ByteReader reader(records); reader.remaining() >= kWaveRecordBytes;) {
    const std::uint32_t type = reader.word();
    waves.push_back({std::string(reader.text(kWaveNameBytes)), type, reader.word(), reader.word()});
  }
  return waves;
}

void WaveDatabase::loadOnce() {
  if (!loaded) {
    load();
  }
}

const WaveDatabase::SampleRecord* WaveDatabase::sampleAt(std::uint32_t index) const {
  return index < samples->size() ? &(*samples)[index] : nullptr;
}

WaveInfo WaveDatabase::lookup(std::int64_t id) {
  // Does not happen during audio: each pad gets a wave when it is built, which loads the tables.
  cofu::core::mayWait([this] { loadOnce(); });
  if (id < 0 || id >= static_cast<std::int64_t>(waves->size())) {
    return {};
  }
  const WaveRecord& wave = (*waves)[static_cast<std::size_t>(id)];
  const SampleRecord* left = sampleAt(wave.leftSample);
  const SampleRecord* right = wave.type == kStereo ? sampleAt(wave.rightSample) : left;
  const bool knownType = wave.type == kMono || wave.type == kStereo;
  if (!knownType || left == nullptr || right == nullptr) {
    return {};
  }
  return {1, left->start, right->start, left->end, right->end, playableRate(left->sampleRate), wave.name, wave.type};
}

std::int32_t WaveDatabase::waveCount() {
  loadOnce();
  return static_cast<std::int32_t>(waves->size());
}

}  // namespace tesh::bramel::plugin::sivray
