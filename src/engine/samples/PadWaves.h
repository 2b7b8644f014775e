// The waves of all pads: their memory, what of it has not been read yet, and the wave that each may take next. Four
// words are the road of a wave: `fetch` it, `take` it, read what voices `need`, and `readOn` between the blocks.
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

/// Except for `fetch`, operations run on the audio thread or under the lock of a block. Pads must exist. A wave number
/// that names nothing playable reads the first sample of the file.
class PadWaves {
 public:
  /// Memory for `padCount` pads with `slotFrames` frames each. `sampleFile` must outlive the object.
  PadWaves(PcmFile& sampleFile, std::size_t padCount, std::size_t slotFrames);

  PcmPool& pool() { return memory; }
  const PcmPool& pool() const { return memory; }

  /// Holds a wave for the pad, which `take` has then only to exchange for the present one; reads it unless another pad
  /// or instance has it already. Waits for the disk: any thread but the audio thread, also during the other calls.
  void fetch(std::size_t pad, std::int32_t wave);

  /// The pad has no wave from now on.
  void empty(std::size_t pad) SIVRAY_NONBLOCKING;

  /// The places of the first frame of a pad's memory before and after it took a wave, see PcmPool::frameOf.
  struct Move {
    std::int32_t from = 0;
    std::int32_t to = 0;
  };

  /// Gives the pad a wave: the one that was fetched, or else it begins to read it into the pad's own memory, which
  /// reads a short wave at once. Voices that play from the memory read the new samples from then on; after a move they
  /// play on from the new place, and must not read from the old one any more.
  Move take(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING;

  /// Whether the memory of a pad lacks pieces.
  bool isReading() const { return openReadings != 0; }
  /// Reads what the memory that begins at the frame `base` lacks of `first` to `last`.
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
  std::vector<WaveReading> readings;  ///< Of each pad.
  std::size_t openReadings = 0;
  std::size_t latestPad = 0;  ///< Whose turn it was in `readOn`.
  std::mutex fetchMutex;      ///< One `fetch` at a time.
};

}  // namespace tesh::bramel::plugin::sivray
