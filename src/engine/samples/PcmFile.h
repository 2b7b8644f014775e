// The sample file, drumdata.bin: raw big-endian 16-bit samples, with their index. It is opened anew for each read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "engine/samples/WaveDatabase.h"
#include "platform/Files.h"

namespace tesh::bramel::plugin::sivray {

/// The samples do not change while the file is in use.
class PcmFile {
 public:
  /// `folder` is the folder of the sample files inside the resource directory. Reads the index. The first one of a
  /// process also asks the system to load the samples into its cache.
  explicit PcmFile(std::string_view folder);

  WaveDatabase& database() { return waveDatabase; }

  /// Fills a slot with n = min(frames, slotFrames) interleaved frames, then with zeros up to `slotFrames`. `offsets`
  /// are the positions of both channels in the file, in samples. Samples past the end of the file are 0. Returns n, or
  /// 0 with nothing written if the file cannot be opened. Allocates nothing. Any thread.
  std::size_t read(std::int16_t* destination, std::span<const std::uint32_t, 2> offsets, std::size_t frames,
                   std::size_t slotFrames) const;

 private:
  platform::NativePath path;
  WaveDatabase waveDatabase;
};

}  // namespace tesh::bramel::plugin::sivray
