// The waves of all pads: their memory, the pieces that are still missing, and the wave that each pad may take next. A
// wave goes through four calls: `fetch`, `take`, `need` for voices that play, and `readOn` between blocks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "core/RealTime.h"
#include "engine/samples/PcmFile.h"
#include "engine/samples/PcmPool.h"
#include "engine/samples/WaveReading.h"

namespace tesh::bramel::plugin::sivray {

/// Except for `fetch`, operations run on the audio thread or under the lock of a block. Pads must exist. For a wave
/// number without a playable wave, the file's first sample is read.
class PadWaves {
 public:
  /// Allocates memory for `padCount` pads with `slotFrames` frames each. `sampleFile` must outlive this object.
  PadWaves(PcmFile& sampleFile, std::size_t padCount, std::size_t slotFrames);

  PcmPool& pool() { return memory; }
  const PcmPool& pool() const { return memory; }

  /// Holds a wave ready for the pad, so that `take` only swaps it in. Reads it unless another pad or instance already
  /// has it. Waits for the disk. Any thread but the audio thread, also during the other calls.
  void fetch(std::size_t pad, std::int32_t wave);

  /// Leaves the pad without a wave.
  void empty(std::size_t pad) SIVRAY_NONBLOCKING;

  /// Frame numbers of the first frame of a pad's memory before and after it took a wave, see PcmPool::frameOf.
  struct Move {
    std::int32_t from = 0;
    std::int32_t to = 0;
  };

  /// Gives the pad a wave: the fetched one, or else one that it starts to read into the pad's own memory; a short wave
  /// is read at once. From then on, voices that play from the memory read the new samples. After a move, voices must go
  /// on at the new place and no longer read from the old one.
  Move take(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING;

  /// Whether pieces are missing in the memory of a pad.
  bool isReading() const { return openReadings != 0; }
  /// Reads the missing frames `first` to `last` of the memory that begins at frame `base`.
  void need(std::int32_t base, std::size_t first, std::size_t last) SIVRAY_NONBLOCKING;
  /// Reads one missing piece.
  void readOn() SIVRAY_NONBLOCKING;
  /// Reads all missing pieces.
  void finish();

 private:
  WaveStretch stretchOf(std::int32_t wave) const SIVRAY_NONBLOCKING;
  void begin(std::size_t pad, std::int32_t wave);
  void noteProgress(std::size_t pad) SIVRAY_NONBLOCKING;
  void countReadings() SIVRAY_NONBLOCKING;

  PcmFile& file;
  PcmPool memory;
  std::vector<WaveReading> readings;  ///< One per pad.
  std::size_t openReadings = 0;
  std::size_t latestPad = 0;  ///< The pad whose turn it was in `readOn`.
  std::mutex fetchMutex;      ///< One `fetch` at a time.
};

}  // namespace tesh::bramel::plugin::sivray
