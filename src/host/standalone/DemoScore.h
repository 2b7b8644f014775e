// The demo's notes, tempos and kits, read from its MIDI file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tesh::bramel::standalone {

inline constexpr double kSecondsPerMinute = 60.0;

/// A piece that repeats. Empty if there is nothing to play.
struct DemoScore {
  struct Event {
    double seconds = 0.0;
    std::array<std::uint8_t, 3> bytes{};
    int size = 0;

    /// True for a controller or pitch bend, which may move a macro: macros move only at the start of a block.
    bool needsBlockStart() const;
  };

  struct Tempo {
    double seconds = 0.0;
    double beatsPerMinute = 120.0;
    double beat = 0.0;  ///< Beat of the piece at which this tempo begins.
  };

  struct Kit {
    double seconds = 0.0;
    std::string name;  ///< Name of a factory program.
  };

  std::vector<Event> events;      ///< In time order, like the other lists.
  std::vector<Tempo> tempos{{}};  ///< The first begins at 0.
  std::vector<Kit> kits;  ///< Kits and the times at which they begin; empty for a piece that plays the selected sound.
  double seconds = 0.0;   ///< Length of one round: whole bars of four beats, counted from the last tempo change.

  bool isEmpty() const { return events.empty(); }

  /// Never fails: before the first tempo it returns the first.
  const Tempo& tempoAt(double time) const;
};

/// Reads a standard MIDI file; empty if the bytes are none or hold no notes. A text event "program=NAME" selects a kit.
DemoScore readDemoScore(std::span<const std::uint8_t> file);

}  // namespace tesh::bramel::standalone
