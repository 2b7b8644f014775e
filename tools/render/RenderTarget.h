// The interface of an instrument that the renderer drives: it takes MIDI, a tempo and moves, renders blocks of audio,
// and keeps a state.
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

  /// Returns the rate of `process` in frames per second.
  virtual double sampleRate() const = 0;

  /// Returns the state as a host saves it. Must be called before `start` or after the last block.
  virtual std::vector<std::uint8_t> state() = 0;
  virtual void setState(std::span<const std::uint8_t> chunk) = 0;

  /// Returns whether hidden macros and engine parameters can move while audio runs, which no host can do.
  virtual bool reachesEngine() const = 0;

  /// Returns the names of the parameters that hosts see, in their order.
  virtual std::vector<std::string> hostNames() = 0;

  /// Starts playing; blocks may hold up to `longestBlock` frames.
  virtual void start(int longestBlock) = 0;

  /// Sets the tempo from the next block on.
  virtual void setTempo(double beatsPerMinute) = 0;

  /// Changes a value at the start of the next block. Macros hidden from hosts and engine parameters need
  /// `reachesEngine`.
  virtual void move(const Move& move) = 0;

  /// Puts a message of at most three bytes at `frame` of the next block.
  virtual void sendMidi(std::span<const std::uint8_t> bytes, int frame) = 0;

  /// Renders a block of `frames` samples into both channels.
  virtual void process(float* left, float* right, int frames) = 0;

  /// The same with the outs beside the main one: vimo::kAllChannels channels, in the order of ProcessBlock. Targets
  /// that have no other outs render the main one alone.
  virtual void processOuts(std::span<float*> outputs, int frames) { process(outputs[0], outputs[1], frames); }
};

}  // namespace sivray::render
