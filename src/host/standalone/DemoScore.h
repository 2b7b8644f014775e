// The demo's notes, read from its MIDI file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tesh::bramel::standalone {

/// A piece that is repeated from its start. Empty if there is nothing to play.
struct DemoScore {
  struct Event {
    double seconds = 0.0;
    std::array<std::uint8_t, 3> bytes{};
    int size = 0;

    /// A controller or pitch bend. It may move a macro, and macros move at the start of a block alone.
    bool needsBlockStart() const;
  };

  std::vector<Event> events;  ///< By time.
  double seconds = 0.0;       ///< Of one round; whole bars of four beats.
  double beatsPerMinute = 120.0;

  bool isEmpty() const { return events.empty(); }
};

/// The score in the bytes of a standard MIDI file of one tempo, empty if they are something else or hold no notes.
DemoScore readDemoScore(std::span<const std::uint8_t> file);

}  // namespace tesh::bramel::standalone
