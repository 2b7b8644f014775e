// The renderer's interface to an instrument, which takes MIDI, tempo and moves, renders blocks of audio, and holds a
// state.
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

  /// Returns whether hidden macros and engine parameters can be moved while audio runs, which no host can do.
  virtual bool reachesEngine() const = 0;

  /// Returns the names of the parameters that hosts see, in their order.
  virtual std::vector<std::string> hostNames() = 0;

  /// Starts playing, with blocks of up to `longestBlock` frames.
  virtual void start(int longestBlock) = 0;

  /// Sets the tempo from the next block on.
  virtual void setTempo(double beatsPerMinute) = 0;

  /// Changes a value at the start of the next block. Macros that hosts do not see, and engine parameters, require
  /// `reachesEngine`.
  virtual void move(const Move& move) = 0;

  /// Queues a message of at most three bytes for `frame` of the next block.
  virtual void sendMidi(std::span<const std::uint8_t> bytes, int frame) = 0;

  /// Renders `frames` frames into both channels.
  virtual void process(float* left, float* right, int frames) = 0;

  /// As above for all outputs: vimo::kAllChannels channels, in the order of ProcessBlock. A target with one output
  /// renders the first two channels only.
  virtual void processOuts(std::span<float*> outputs, int frames) { process(outputs[0], outputs[1], frames); }
};

}  // namespace sivray::render
