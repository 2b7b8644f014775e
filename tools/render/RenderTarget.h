// What the renderer drives: an instrument that takes MIDI, a tempo and moves, gives blocks of audio, and keeps a state.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "Move.h"

namespace sivray::render {

class RenderTarget {
 public:
  RenderTarget() = default;
  RenderTarget(const RenderTarget&) = delete;
  RenderTarget& operator=(const RenderTarget&) = delete;
  virtual ~RenderTarget() = default;

  /// Frames per second of what `process` gives.
  virtual double sampleRate() const = 0;

  /// The state as a host saves it. Before `start`, or after the last block.
  virtual std::vector<std::uint8_t> state() = 0;
  virtual void setState(std::span<const std::uint8_t> chunk) = 0;

  /// Whether hidden macros and engine parameters can move while audio runs, which no host can do.
  virtual bool reachesEngine() const = 0;

  /// The names of the parameters that hosts are shown, in their order.
  virtual std::vector<std::string> hostNames() = 0;

  /// Begins to play; blocks may hold up to `longestBlock` frames.
  virtual void start(int longestBlock) = 0;

  /// Sets the tempo from the next block on.
  virtual void setTempo(double beatsPerMinute) = 0;

  /// Moves a value at the start of the next block. Only macros that hosts are shown, unless `reachesEngine`.
  virtual void move(const Move& move) = 0;

  /// Puts a message of at most three bytes at `frame` of the next block.
  virtual void sendMidi(std::span<const std::uint8_t> bytes, int frame) = 0;

  /// Renders a block; both channels hold `frames` samples.
  virtual void process(float* left, float* right, int frames) = 0;
};

}  // namespace sivray::render
