// Keeps track of the pieces of a wave that are still missing.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/WaveReading.h"

#include <algorithm>
#include <utility>

namespace tesh::bramel::plugin::sivray {

void WaveReading::begin(platform::InputFile opened, const WaveStretch& wave, const SampleMemory::Area& area,
                        std::size_t usedFrames) {
  stretch = wave;
  memory = &area;
  frameCount = std::max(usedFrames, wave.frames);
  pieceCount = (frameCount + kPieceFrames - 1) / kPieceFrames;
  nextPiece = 0;
  refusals = 0;
  isRead.reset();
  file = std::move(opened);
  if (pieceCount <= 1) {
    finish();
  }
}

void WaveReading::need(std::size_t first, std::size_t last) {
  const std::size_t end = std::min(last / kPieceFrames + 1, pieceCount);
  for (std::size_t piece = first / kPieceFrames; piece < end; ++piece) {
    if (!isRead[piece]) {
      waitForPiece(piece);
    }
  }
}

void WaveReading::readNext() {
  // Some file systems never read from their cache alone, so after so many refusals it waits.
  constexpr int kPatience = 200;
  while (nextPiece < pieceCount && isRead[nextPiece]) {
    ++nextPiece;
  }
  if (nextPiece == pieceCount) {
    stop();
    return;
  }
  if (refusals == kPatience) {
    waitForPiece(nextPiece);
  }
  refusals = isRead[nextPiece] || readPiece(nextPiece, Reading::cachedOnly) ? 0 : refusals + 1;
}

void WaveReading::finish() {
  PcmFile::readPart(*file, stretch, memory->samples(), 0, frameCount, Reading::waits);
  stop();
}

/// First asks for the frames that follow, so that one wait serves more than this piece.
void WaveReading::waitForPiece(std::size_t piece) {
  if (!readPiece(piece, Reading::cachedOnly)) {
    readPiece(piece, Reading::waits);
  }
}

bool WaveReading::readPiece(std::size_t piece, Reading reading) {
  const std::size_t first = piece * kPieceFrames;
  isRead[piece] =
      PcmFile::readPart(*file, stretch, memory->samples(), first, std::min(kPieceFrames, frameCount - first), reading);
  return isRead[piece];
}

}  // namespace tesh::bramel::plugin::sivray
