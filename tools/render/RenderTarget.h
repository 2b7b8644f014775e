// What the renderer drives: something that takes MIDI, a tempo and named moves, and gives blocks of audio.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace sivray::render {

class RenderTarget {
 public:
  RenderTarget() = default;
  RenderTarget(const RenderTarget&) = delete;
  RenderTarget& operator=(const RenderTarget&) = delete;
  virtual ~RenderTarget() = default;

  /// Frames per second of what `process` gives.
  virtual double sampleRate() const = 0;

  /// The longest block that `process` takes, in frames.
  virtual int longestBlock() const = 0;

  /// Puts a message at `frame` of the next block.
  virtual void sendMidi(std::span<const std::uint8_t> bytes, int frame) = 0;

  /// Sets the tempo from the next block on.
  virtual void setTempo(double beatsPerMinute) = 0;

  /// Moves a named value at `frame` of the next block. Throws RenderError when the name or the value is unknown.
  virtual void move(const std::string& name, const std::string& value, int frame) = 0;

  /// Renders a block; both channels hold `frames` samples.
  virtual void process(float* left, float* right, int frames) = 0;
};

}  // namespace sivray::render
