// The sample file, drumdata.bin: raw big-endian 16-bit samples, and its index. It is opened for each wave.
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

/// A wave's place in the file.
struct WaveStretch {
  std::array<std::uint32_t, 2> offsets{};  ///< First sample of each channel.
  std::size_t frames = 0;                  ///< At most the frames of a slot.

  // NOLINTNEXTLINE(modernize-use-nullptr): the compiler's own code compares with 0.
  friend auto operator<=>(const WaveStretch&, const WaveStretch&) = default;
};

/// Whether a reader waits for the disk.
enum class Reading : std::uint8_t { waits, cachedOnly };

class PcmFile {
 public:
  /// `folder` is the folder of the sample files inside the resource directory. Reads the index. The first object of a
  /// process also asks the system to load the samples into its cache.
  explicit PcmFile(std::string_view folder);

  WaveDatabase& database() { return waveDatabase; }

  /// Empty if the file cannot be opened. Allocates nothing. Any thread.
  std::optional<platform::InputFile> open() const { return platform::InputFile::open(path); }

  /// Fills the interleaved frames `first` to `first` + `count` - 1 of a slot. Frames behind the wave's end, and samples
  /// behind the file's end, are 0. With cachedOnly, returns false if samples are missing from the system's cache, after
  /// asking the system to read them. Allocates nothing. Any thread.
  static bool readPart(platform::InputFile& file, const WaveStretch& wave, std::int16_t* slot, std::size_t first,
                       std::size_t count, Reading reading);

 private:
  platform::NativePath path;
  WaveDatabase waveDatabase;
};

}  // namespace tesh::bramel::plugin::sivray
