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

/// A piece that is repeated from its start. Empty if there is nothing to play.
struct DemoScore {
  struct Event {
    double seconds = 0.0;
    std::array<std::uint8_t, 3> bytes{};
    int size = 0;

    /// A controller or pitch bend. It may move a macro, and macros move at the start of a block alone.
    bool needsBlockStart() const;
  };

  struct Tempo {
    double seconds = 0.0;
    double beatsPerMinute = 120.0;
    double beat = 0.0;  ///< Of the piece, where this tempo begins.
  };

  struct Kit {
    double seconds = 0.0;
    std::string name;  ///< Of a factory program.
  };

  std::vector<Event> events;      ///< By time, as the others.
  std::vector<Tempo> tempos{{}};  ///< The first begins at 0.
  std::vector<Kit> kits;          ///< What plays from when; empty for a piece that takes what is selected.
  double seconds = 0.0;           ///< Of one round; whole bars of four beats from the last tempo on.

  bool isEmpty() const { return events.empty(); }

  /// Never fails: before 0 the first.
  const Tempo& tempoAt(double time) const;
};

/// The score in the bytes of a standard MIDI file, empty if they are something else or hold no notes. A text event
/// "program=NAME" selects a kit.
DemoScore readDemoScore(std::span<const std::uint8_t> file);

}  // namespace tesh::bramel::standalone
