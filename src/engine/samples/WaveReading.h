// Reads a wave piece by piece, so that a voice waits only for the samples that it is about to play.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "engine/samples/PcmFile.h"
#include "engine/samples/PcmPool.h"
#include "platform/Files.h"

namespace tesh::bramel::plugin::sivray {

/// Fills a slot's memory with a wave, in any order of pieces. On the thread that changes waves and plays them. Waits
/// for the disk unless an operation says otherwise.
class WaveReading {
 public:
  /// 93 ms of a wave at its own pitch, which takes about 3 us to read from the system's cache.
  static constexpr std::size_t kPieceFrames = 4096;

  /// Starts to read a wave and stops any earlier reading. A wave of one piece is read at once; of others nothing yet.
  /// `usedFrames` is the number of frames of the area that may not be zero; those beyond the wave become zero with
  /// their pieces.
  void begin(platform::InputFile opened, const WaveStretch& wave, const SampleMemory::Area& area,
             std::size_t usedFrames);

  /// Whether pieces are missing.
  bool isOpen() const { return file.has_value(); }

  std::size_t waveFrames() const { return stretch.frames; }

  /// Stops reading and leaves the memory as it is.
  void stop() { file.reset(); }

  /// Reads the pieces that hold frames `first` to `last`. Frames behind the used ones are already zero.
  void need(std::size_t first, std::size_t last);

  /// Reads the first missing piece if it is in the system's cache, otherwise asks the system to read it ahead. After
  /// the last piece the reading is closed.
  void readNext();

  /// Reads all missing pieces.
  void finish();

 private:
  static constexpr std::size_t kMostPieces = PcmPool::kMaxSlotFrames / kPieceFrames + 1;

  bool readPiece(std::size_t piece, Reading reading);
  void waitForPiece(std::size_t piece);

  std::optional<platform::InputFile> file;
  WaveStretch stretch;
  const SampleMemory::Area* memory = nullptr;
  std::size_t frameCount = 0;
  std::size_t pieceCount = 0;
  std::size_t nextPiece = 0;  ///< All pieces before it have been read.
  int refusals = 0;           ///< Consecutive calls in which the next piece was not in the cache.
  std::bitset<kMostPieces> isRead;
};

}  // namespace tesh::bramel::plugin::sivray
