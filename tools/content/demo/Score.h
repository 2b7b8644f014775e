// A short score for the drum module as text, and the MIDI file that it becomes.
//
//   tempo 104
//   swing 54                       second sixteenths fall at this percentage of an eighth
//   pattern verse                  its lines follow: steps of a sixteenth, 1 to 9 for dynamics, . for a rest
//     kick   9... ..7. 9.6. ....
//     glide  tom.pitch 0:64 8:40   a controller, step:value; "glide" passes through what lies between, "set" jumps
//   play verse verse fill
//
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "content/factory/Kit.h"

namespace sivray::content {

/// The names of pads 0 to 7 in a score: their roles in every factory kit.
inline constexpr std::array<std::string_view, factory::kPads> kPadRoles{"kick",   "perc", "snare", "clap",
                                                                        "cymbal", "tom",  "hat",   "open"};

struct ScoreHit {
  double step = 0.0;  ///< Sixteenths from the start.
  int note = 0;
  int velocity = 0;
};

struct ScoreControl {
  double step = 0.0;
  int controller = 0;
  int value = 0;
};

struct DemoScore {
  double tempo = 120.0;
  double steps = 0.0;  ///< Length.
  std::vector<ScoreHit> hits;
  std::vector<ScoreControl> controls;
};

/// Parses a score. `file` is the name that errors show. Throws factory::TextError.
DemoScore parseScore(std::string_view text, std::string_view file);

/// Writes the score as a MIDI file with one track. Throws std::runtime_error when the file cannot be written.
void writeMidiFile(const std::string& path, const DemoScore& score);

}  // namespace sivray::content
