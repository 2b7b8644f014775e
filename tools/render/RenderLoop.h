// Plays a score and its moves through a target, block by block, into a WAV file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "LevelMeter.h"
#include "MidiScore.h"
#include "Move.h"
#include "RenderTarget.h"
#include "core/NoteMap.h"

namespace sivray::render {

struct RenderSettings {
  int blockFrames = 512;
  double prerollSeconds = 0.0;  ///< Seconds that the target plays before the first frame of the file.
  double tailSeconds = 2.0;
  int bits = 24;
  bool quiet = false;
  bool stems = false;  ///< Write a file for each output, if the target has several.
  tesh::cofu::core::NoteMap notes = tesh::cofu::core::namedNoteMaps().front().map;
};

struct RenderResult {
  LevelMeter levels;
  double sampleRate = 0.0;
  double secondsSpent = 0.0;  ///< Wall-clock time spent in the target only.
  std::ptrdiff_t notesWithoutPad = 0;
  std::set<std::uint8_t> numbersWithoutPad;  ///< Note numbers, as in the file, that reached no pad.
};

/// Called after each block with left, right and the number of frames.
using BlockListener = std::function<void(const float*, const float*, int)>;

/// Renders the score, the moves and the tail. An event's frame is its time in seconds times the rate, rounded to the
/// nearest. With stems, the outputs other than the main one are written to their own files, see stemPaths. A block ends
/// early at a move, tempo change or controller, so that each takes effect at its frame. Throws RenderError, or
/// Interrupted after a signal, and then leaves no file.
RenderResult renderScore(const MidiScore& score, const std::vector<Move>& moves, RenderTarget& target,
                         const RenderSettings& settings, const std::string& outputPath,
                         const BlockListener& listener = {});

/// Returns the files of the outputs other than the main one, in their order: for "beat.wav" these are "beat-pad1.wav"
/// to "beat-pad8.wav" and "beat-effect.wav".
std::vector<std::string> stemPaths(const std::string& outputPath);

/// Returns the summary line: length, peak, RMS, real-time factor, and the number of notes that reached no pad.
std::string describe(const RenderResult& result, const std::string& outputPath);

}  // namespace sivray::render
