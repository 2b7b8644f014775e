// Plays the demo in a loop, block by block.
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

/// A start or stop takes effect with the next block. A start begins at the first beat; a stop ends the notes that
/// sound.
class DemoPlayer {
 public:
  explicit DemoPlayer(DemoScore newScore);

  // Any thread.

  void play() { isWanted = !score.isEmpty(); }
  void stop() { isWanted = false; }
  bool isPlaying() const { return isWanted; }
  bool hasScore() const { return !score.isEmpty(); }

  /// The number of the score's kit that plays or is about to play. It changes 0.1 s early, because a kit takes a moment
  /// to load.
  std::size_t kit() const { return kitIndex; }
  /// Empty if the score has no such kit.
  const std::string& kitName(std::size_t kit) const;
  /// Tells that the kit has been selected. The piece waits at the beginning of a kit until then.
  void tellSelected(std::size_t kit) { selectedKit = kit; }

  /// Must not run during a block. The position in the piece is kept.
  void setSampleRate(double newRate);

  // Audio thread, in this order for each block.

  /// Applies a start or stop, and returns the length of the next block in frames, 1 to `frames`. The block ends where
  /// the demo moves a controller, changes tempo or kit, or starts over.
  int beginBlock(int frames);
  /// Of the block that has begun. Also the demo's tempo while it is stopped, so that tempo effects keep theirs.
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

  // Audio thread only.
  bool moving = false;
  bool isWaiting = false;     ///< Waiting for the kit to be selected.
  std::int64_t position = 0;  ///< Frames from the piece's start.
  std::size_t next = 0;       ///< Index of the next event.
  std::array<bool, kNotes> isSounding{};
};

}  // namespace tesh::bramel::standalone
