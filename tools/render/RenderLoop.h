// Plays a score through a target, block by block, into a WAV file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "LevelMeter.h"
#include "MidiScore.h"
#include "RenderTarget.h"

namespace sivray::render {

struct RenderSettings {
  int blockFrames = 512;
  double tailSeconds = 2.0;
  int bits = 24;
  bool quiet = false;
};

struct RenderResult {
  LevelMeter levels;
  double sampleRate = 0.0;
  double secondsSpent = 0.0;  ///< Wall-clock time inside the target alone.
};

/// Renders the whole score and its tail. An event's frame is its time in seconds times the rate, rounded to the
/// nearest. Throws RenderError; then no file is left behind.
RenderResult renderScore(const MidiScore& score, RenderTarget& target, const RenderSettings& settings,
                         const std::string& outputPath);

/// The line that tells a person what was made: length, peak, RMS and real-time factor.
std::string describe(const RenderResult& result, const std::string& outputPath);

}  // namespace sivray::render
