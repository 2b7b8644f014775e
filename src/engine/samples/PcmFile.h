// The sample file, drumdata.bin: raw big-endian 16-bit samples, with their index. It is opened anew for each read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "engine/samples/WaveDatabase.h"
#include "platform/Files.h"

namespace tesh::bramel::plugin::sivray {

/// Reading belongs to the thread that changes a wave; only one read may run at a time.
class PcmFile {
 public:
  /// `folder` is the folder of the sample files inside the resource directory. Reads the index. The first one of a
  /// process also asks the system to load the samples into its cache.
  explicit PcmFile(std::string_view folder);

  WaveDatabase& database() { return waveDatabase; }

  /// Fills a slot with n = min(frames, slotFrames) interleaved frames, then with zeros up to `slotFrames`. `offsets`
  /// are the positions of both channels in the file, in samples. Samples past the end of the file are 0. Returns n, or
  /// 0 with nothing written if the file cannot be opened. Allocates nothing.
  std::size_t read(std::int16_t* destination, std::span<const std::uint32_t, 2> offsets, std::size_t frames,
                   std::size_t slotFrames);

  /// Reads the stretches that `read` would read, for the system to keep them in its cache. Any thread but the audio
  /// thread, also during `read`.
  void warm(std::span<const std::uint32_t, 2> offsets, std::size_t frames) const;

 private:
  static constexpr std::size_t kReadSamples = 8192;

  void readPiece(platform::InputFile& file, std::uint32_t offset, std::size_t sample, std::span<std::uint16_t> piece);
  void readMono(platform::InputFile& file, std::int16_t* destination, std::uint32_t offset, std::size_t frames);
  void readStereo(platform::InputFile& file, std::int16_t* destination, std::span<const std::uint32_t, 2> offsets,
                  std::size_t frames);

  platform::NativePath path;
  std::array<std::uint16_t, kReadSamples> readBuffer{};
  WaveDatabase waveDatabase;
};

}  // namespace tesh::bramel::plugin::sivray
