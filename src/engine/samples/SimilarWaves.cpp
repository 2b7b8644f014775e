// Reads and writes records of twelve 16-bit numbers, of which the last is 0.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/SimilarWaves.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

#include "core/LittleEndian.h"

namespace tesh::vimo {
namespace {

constexpr std::size_t kHeaderBytes = 8;
constexpr std::uint16_t kNoWave = 0xFFFF;
constexpr float kStepsPerDecibel = 100.0F;

using Record =
    std::array<std::uint16_t, SimilarWaves::kRecordBytes / 2>;  ///< Wave, loudness, farthest, the nearest, 0.
constexpr std::size_t kFirstNearest = 3;

Record recordOf(const WaveKin& kin) {
  Record record{};
  record[0] = static_cast<std::uint16_t>(kin.wave);
  record[1] = static_cast<std::uint16_t>(static_cast<std::int16_t>(std::lround(kin.loudness * kStepsPerDecibel)));
  record[2] = kin.farthest < 0 ? kNoWave : static_cast<std::uint16_t>(kin.farthest);
  for (std::size_t i = 0; i < WaveKin::kMost; ++i) {
    record[kFirstNearest + i] = i < kin.nearest.size() ? static_cast<std::uint16_t>(kin.nearest[i]) : kNoWave;
  }
  return record;
}

WaveKin kinOf(const Record& record) {
  WaveKin kin;
  kin.wave = record[0];
  kin.loudness = static_cast<float>(static_cast<std::int16_t>(record[1])) / kStepsPerDecibel;
  kin.farthest = record[2] == kNoWave ? -1 : record[2];
  for (std::size_t i = 0; i < WaveKin::kMost && record[kFirstNearest + i] != kNoWave; ++i) {
    kin.nearest.push_back(record[kFirstNearest + i]);
  }
  return kin;
}

}  // namespace

/// The 32-bit FNV-1a hash.
std::uint32_t SimilarWaves::hashOf(std::span<const std::uint8_t> bytes) {
  std::uint32_t hash = 2166136261U;
  for (const std::uint8_t byte : bytes) {
    hash = (hash ^ byte) * 16777619U;
  }
  return hash;
}

WaveKin SimilarWaves::kinIn(std::span<const std::uint8_t> record) {
  cofu::core::ByteReader reader(record);
  Record numbers{};
  for (std::size_t i = 0; i < numbers.size(); i += 2) {
    const std::uint32_t word = reader.word();
    numbers[i] = static_cast<std::uint16_t>(word);
    numbers[i + 1] = static_cast<std::uint16_t>(word >> 16U);
  }
  return kinOf(numbers);
}

bool SimilarWaves::loadFrom(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> index) {
  kins.clear();
  cofu::core::ByteReader reader(bytes);
  if (bytes.size() % kRecordBytes != kHeaderBytes || reader.word() != kFormat || reader.word() != hashOf(index)) {
    return false;
  }
  for (auto rest = bytes.subspan(kHeaderBytes); !rest.empty(); rest = rest.subspan(kRecordBytes)) {
    WaveKin kin = kinIn(rest.first(kRecordBytes));
    kins.insert_or_assign(kin.wave, std::move(kin));
  }
  return true;
}

const WaveKin* SimilarWaves::of(std::int32_t wave) const {
  const auto found = kins.find(wave);
  return found == kins.end() ? nullptr : &found->second;
}

std::vector<std::uint8_t> SimilarWaves::pack(std::span<const WaveKin> kins, std::span<const std::uint8_t> index) {
  std::vector<std::uint8_t> bytes;
  cofu::core::ByteWriter writer(bytes);
  writer.word(kFormat);
  writer.word(hashOf(index));
  for (const WaveKin& kin : kins) {
    const Record record = recordOf(kin);
    for (std::size_t i = 0; i < record.size(); i += 2) {
      writer.word(record[i] | std::uint32_t{record[i + 1]} << 16U);
    }
  }
  return bytes;
}

std::int32_t levelKept(const SimilarWaves& waves, std::int32_t from, std::int32_t to, std::int32_t level) {
  constexpr float kDecibelsPerDecadeOfLevel = 40.0F;  // The engine squares the level, so a tenth of it is -40 dB.
  constexpr std::int32_t kHighest = 127;
  const WaveKin* const before = waves.of(from);
  const WaveKin* const after = waves.of(to);
  if (level <= 0 || before == nullptr || after == nullptr) {
    return level;
  }
  const float decades = (before->loudness - after->loudness) / kDecibelsPerDecadeOfLevel;
  const auto wanted = std::lround(static_cast<float>(level) * std::pow(10.0F, decades));
  return static_cast<std::int32_t>(std::clamp<long>(wanted, 1, kHighest));
}

std::vector<PadSound> varied(const SimilarWaves& waves, std::span<const PadSound> pads, std::uint32_t seed) {
  std::mt19937 dice(seed);
  std::vector<PadSound> result(pads.begin(), pads.end());
  for (PadSound& pad : result) {
    // One number per pad, also for pads that stay, so that a pad's result does not depend on the others.
    const std::size_t thrown = dice();
    const WaveKin* const kin = waves.of(pad.wave);
    if (kin != nullptr && !kin->nearest.empty()) {
      const std::int32_t wave = kin->nearest[thrown % kin->nearest.size()];
      pad = {wave, levelKept(waves, pad.wave, wave, pad.level)};
    }
  }
  return result;
}

}  // namespace tesh::vimo
