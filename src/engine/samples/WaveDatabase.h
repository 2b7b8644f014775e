// The engine's index of the sample file: the stretches of samples of each wave number. A browser uses
// SivraySampleLibrary instead, which sorts the waves by category.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/EngineRate.h"
#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

/// The result of a lookup. Positions count samples in drumdata.bin; an end is the last sample of its stretch. For a
/// wave that cannot be played, `valid` is 0, all positions are 0, the name is empty and the rate 44100 Hz.
struct WaveInfo {
  std::uint32_t valid = 0;
  std::uint32_t leftStart = 0;
  std::uint32_t rightStart = 0;
  std::uint32_t leftEnd = 0;
  std::uint32_t rightEnd = 0;
  float sampleRate = static_cast<float>(cofu::core::kEngineRate);  ///< Hz.
  std::string_view name;   ///< Points into the tables; valid until they are read again.
  std::uint32_t type = 0;  ///< 1 mono, 2 stereo.
};

/// The tables of sampleparam.bin and drumparam.bin, read on first use. Equal tables are shared.
class WaveDatabase {
 public:
  /// `folderName` is the folder of the index files inside the resource directory.
  explicit WaveDatabase(std::string_view folderName);

  /// Looks up any wave number. A record with a rate of 0 gets 44100 Hz. May run on the audio thread once the tables
  /// have been read.
  WaveInfo lookup(std::int64_t id) SIVRAY_NONBLOCKING;

  /// The number of waves, 0 when there are no index files.
  std::int32_t waveCount();

  /// Reads the index files again. A missing file leaves its table empty.
  void load();

  /// Reads the records of both files from memory. Bytes after the last whole record are ignored.
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
  using Samples = std::vector<SampleRecord>;
  using Waves = std::vector<WaveRecord>;

  static Samples samplesOf(std::span<const std::uint8_t> records);
  static Waves wavesOf(std::span<const std::uint8_t> records);

  std::shared_ptr<const Samples> samples = std::make_shared<const Samples>();
  std::shared_ptr<const Waves> waves = std::make_shared<const Waves>();
  std::string folder;
};

}  // namespace tesh::bramel::plugin::sivray
