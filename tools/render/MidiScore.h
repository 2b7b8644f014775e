// A MIDI file in the form that the renderer plays: timed channel messages, tempo changes and moves.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace sivray::render {

/// A channel message of up to three bytes.
struct ScoreMessage {
  double seconds = 0.0;
  std::array<std::uint8_t, 3> bytes{};
  int size = 0;
};

/// A tempo change.
struct ScoreTempo {
  double seconds = 0.0;
  double beatsPerMinute = 120.0;
};

/// A parameter change stored in the file as a text event "NAME=VALUE", for example "pad3.pitch=30", "master=100" or
/// "program=Dub Echo".
struct ScoreMove {
  double seconds = 0.0;
  std::string name;
  std::string value;
};

/// The contents of a file. Each list is ordered by time; simultaneous events keep the order of tracks and bytes.
struct MidiScore {
  std::vector<ScoreMessage> messages;
  std::vector<ScoreTempo> tempos;
  std::vector<ScoreMove> moves;
  double lengthSeconds = 0.0;  ///< Time of the last event of any kind.
};

/// Reads a standard MIDI file. Throws RenderError when it is missing, empty, broken, without notes, or without a time
/// base.
MidiScore readMidiScore(const std::string& path);

}  // namespace sivray::render
