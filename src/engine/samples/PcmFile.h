// The sample file, drumdata.bin: raw big-endian 16-bit samples, with their index. It is opened anew for each wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "engine/samples/WaveDatabase.h"
#include "platform/Files.h"

namespace tesh::bramel::plugin::sivray {

/// Where a wave lies in the file.
struct WaveStretch {
  std::array<std::uint32_t, 2> offsets{};  ///< Of both channels, in samples.
  std::size_t frames = 0;                  ///< As many as a slot holds.

  // NOLINTNEXTLINE(modernize-use-nullptr): what the compiler makes of it compares with 0.
  friend auto operator<=>(const WaveStretch&, const WaveStretch&) = default;
};

/// Whether a reader waits for the disk.
enum class Reading : std::uint8_t { waits, cachedOnly };

class PcmFile {
 public:
  /// `folder` is the folder of the sample files inside the resource directory. Reads the index. The first one of a
  /// process also asks the system to load the samples into its cache.
  explicit PcmFile(std::string_view folder);

  WaveDatabase& database() { return waveDatabase; }

  /// Nothing if the file cannot be opened. Allocates nothing. Any thread.
  std::optional<platform::InputFile> open() const { return platform::InputFile::open(path); }

  /// Fills the interleaved frames `first` to `first` + `count` - 1 of a slot. Frames past the wave's, and samples past
  /// the end of the file, are 0. Returns false if `reading` is cachedOnly and samples are missing from the system's
  /// cache; the system has then been asked to read them. Allocates nothing. Any thread.
  static bool readPart(platform::InputFile& file, const WaveStretch& wave, std::int16_t* slot, std::size_t first,
                       std::size_t count, Reading reading);

 private:
  platform::NativePath path;
  WaveDatabase waveDatabase;
};

}  // namespace tesh::bramel::plugin::sivray
