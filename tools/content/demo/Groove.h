// A groove as text, and the MIDI file that a suite of grooves becomes.
//
//   kit "Boom Bap"                 a kit of the factory bank
//   tempo 92
//   beat 4                         steps of a beat: 4 are sixteenths, 3 are triplets
//   swing 58                       every second step falls at this percentage of two
//   human 4                        hits are up to so many milliseconds and steps of velocity off
//   master 112
//   pattern verse                  its lines follow: steps, 1 to 9 for dynamics, . for a rest
//     kick   9... ..7. 9.6. ....   a to i play two hits in a step, r to z three, at the dynamics 1 to 9
//     glide  hat.decay 0:64 8:90   a controller, step:value; "glide" passes through what lies between, "set" jumps
//     set    tom.pitch 0:+3 8:-2   pitches also in semitones
//     set    effect.type 0:HallReverb   an effect's name without its blanks
//   play verse verse fill
//   end  ring                      what follows the last bar, where nothing else begins
//   kit "Trap Night"               a new groove begins here, on this kit
//   play verse
//
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "content/factory/Kit.h"

namespace sivray::content {

/// The names of pads 0 to 7 in a groove: their roles in every factory kit.
inline constexpr std::array<std::string_view, factory::kPads> kPadRoles{"kick",   "perc", "snare", "clap",
                                                                        "cymbal", "tom",  "hat",   "open"};

struct GrooveHit {
  double beat = 0.0;   ///< From the start.
  double beats = 0.0;  ///< Length of the note.
  int note = 0;
  int velocity = 0;
};

struct GrooveMove {
  double beat = 0.0;
  int controller = 0;
  int value = 0;
};

struct Groove {
  std::string kit;
  double tempo = 120.0;  ///< Beats a minute.
  double beats = 0.0;    ///< Total length of the bars in "play".
  double endBeats = 0.0;
  std::vector<GrooveHit> hits;
  std::vector<GrooveMove> moves;

  double seconds() const { return (beats + endBeats) * 60.0 / tempo; }
};

/// Parses the grooves of one file, at least one. `file` is the name that errors show. Throws factory::TextError.
std::vector<Groove> parseGrooves(std::string_view text, std::string_view file);

/// Returns the grooves of a folder in the order of its list "suite.txt", which names a file a line, without ".groove".
/// Throws factory::TextError, also for a groove that is not in the list, and std::runtime_error for an unreadable file.
std::vector<Groove> readSuite(const std::string& folder);

/// Writes the grooves one after the other as a MIDI file of one track. A text event "program=KIT" precedes each.
/// Throws std::runtime_error when the file cannot be written.
void writeMidiFile(const std::string& path, const std::vector<Groove>& suite);

}  // namespace sivray::content
