// Which stretches of the sample file each wave is made of: the engine's view of the two index files that stand beside
// drumdata.bin. The browser's view, sorted into categories, is SivraySampleLibrary.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

/// What a wave number stands for. Positions are sample indices into drumdata.bin, ends inclusive. A wave that cannot be
/// played has `valid` 0, all positions 0, no name and a rate of 44100.
struct WaveInfo {
  std::uint32_t valid = 0;
  std::uint32_t leftStart = 0;
  std::uint32_t rightStart = 0;
  std::uint32_t leftEnd = 0;
  std::uint32_t rightEnd = 0;
  float sampleRate = 44100.0F;
  std::string_view name;  ///< Of the tables; good until they are read again.
  std::uint32_t type = 0;
};

/// The tables of sampleparam.bin and drumparam.bin. They are read on first use and kept.
class WaveDatabase {
 public:
  /// `folderName` is the folder of the index files inside the resource directory.
  explicit WaveDatabase(std::string_view folderName);

  /// The wave numbered `id`; any number may be asked for. A record with a rate of 0 is answered with 44100. Audio
  /// thread safe once the tables have been read.
  WaveInfo lookup(std::int64_t id) SIVRAY_NONBLOCKING;

  /// The number of waves, 0 when there are no index files.
  std::int32_t waveCount();

  /// Reads the index files, replacing what was there. A missing file leaves its table empty.
  void load();

  /// The same from bytes at hand. Bytes after the last whole record are ignored.
  void loadFrom(std::span<const std::uint8_t> sampleRecords, std::span<const std::uint8_t> waveRecords);

 private:
  struct SampleRecord {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    std::uint32_t sampleRate = 0;
  };

  struct WaveRecord {
    std::string name;
    std::uint32_t type = 0;
    std::uint32_t leftSample = 0;
    std::uint32_t rightSample = 0;
  };

  void loadOnce();
  const SampleRecord* sampleAt(std::uint32_t index) const;

  bool loaded = false;
  std::vector<SampleRecord> samples;
  std::vector<WaveRecord> waves;
  std::string folder;
};

}  // namespace tesh::bramel::plugin::sivray
