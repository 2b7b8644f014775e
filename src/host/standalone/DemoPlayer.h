// Plays the demo in a loop, block by block, for whoever wants to play along.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/EngineRate.h"
#include "host/standalone/DemoScore.h"

namespace tesh::bramel::standalone {

/// Starts and stops with the next block. A start begins at the first beat; a stop ends the notes that sound.
class DemoPlayer {
 public:
  explicit DemoPlayer(DemoScore newScore);

  // Any thread.

  void play() { isWanted = !score.isEmpty(); }
  void stop() { isWanted = false; }
  bool isPlaying() const { return isWanted; }
  bool hasScore() const { return !score.isEmpty(); }

  /// The number of the score's kit that plays or comes soon: a kit takes a moment to load.
  std::size_t kit() const { return kitIndex; }
  /// Empty if the score has no such kit.
  const std::string& kitName(std::size_t kit) const;
  /// Tells that the kit is selected. The piece waits at a kit's start until it is, as on a busy machine.
  void tellSelected(std::size_t kit) { selectedKit = kit; }

  /// While no block is played. Keeps the place in the piece.
  void setSampleRate(double newRate);

  // Audio thread, in this order for each block.

  /// Takes in what is wanted, and returns the length of the next block in frames: 1 to `frames`. It ends where the demo
  /// moves a controller, changes its tempo or its kit, or begins anew.
  int beginBlock(int frames);
  /// Of the block that was begun. The tempo is the demo's also at rest, so that effects in time keep theirs.
  double beatsPerMinute() const { return score.tempoAt(seconds()).beatsPerMinute; }
  bool isMoving() const { return moving; }
  std::int64_t frame() const { return position; }
  double beat() const;
  /// Adds the events of the block.
  void addEvents(juce::MidiBuffer& midi, int frames);
  void endBlock(int frames) { position += moving && !isWaiting ? frames : 0; }

 private:
  static constexpr std::size_t kNotes = 128;

  std::int64_t frameOf(double time) const;
  double seconds() const { return static_cast<double>(position) / rate; }
  std::int64_t endOfBlock(std::int64_t latest) const;
  void chooseKit(std::int64_t length);
  std::size_t kitAt(std::int64_t place) const;
  void add(juce::MidiBuffer& midi, const DemoScore::Event& event, int offset);
  void endNotes(juce::MidiBuffer& midi);

  const DemoScore score;
  double rate = cofu::core::kEngineRate;
  std::atomic<bool> isWanted = false;
  std::atomic<std::size_t> kitIndex = 0;  ///< Of the score's kits.
  std::atomic<std::size_t> selectedKit = 0;

  // The audio thread's.
  bool moving = false;
  bool isWaiting = false;     ///< For the kit.
  std::int64_t position = 0;  ///< Frames from the piece's start.
  std::size_t next = 0;       ///< Of the events.
  std::array<bool, kNotes> isSounding{};
};

}  // namespace tesh::bramel::standalone
