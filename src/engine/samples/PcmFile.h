// The sample file: one raw file of big-endian 16-bit samples with its index, opened afresh for each read.
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

class PcmFile {
 public:
  /// `folder` is the folder of the four sample files inside the resource directory. Reads the index and asks the system
  /// to have the samples at hand.
  explicit PcmFile(std::string_view folder);

  WaveDatabase& database() { return waveDatabase; }

  /// Fills a slot: n = min(frames, slotFrames) frames of both channels, whose `offsets` are sample indices into the
  /// file, interleaved, then zeros up to `slotFrames`. What lies behind the end of the file reads as zero. Gives n, or
  /// 0 with nothing written when the file cannot be opened. Allocates nothing; runs where a wave is changed.
  std::size_t read(std::int16_t* destination, std::span<const std::uint32_t, 2> offsets, std::size_t frames,
                   std::size_t slotFrames);

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
