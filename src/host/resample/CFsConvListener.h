// The interface through which the sample-rate converter runs the instrument at the engine's rate.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Called on the thread that calls the converter. Each operation does nothing unless it is overridden.
class CFsConvListener {
 public:
  virtual ~CFsConvListener() = default;

  /// Must render `frames` frames at the engine's rate, 0 or more. `inputs` holds two channels. If the host's rate is
  /// the engine's, they are the host's own, which may be null. `outputs` holds the main out's two channels, and two
  /// more for each other out if the host listens to any: null for those that nobody listens to.
  virtual void onProcess([[maybe_unused]] float** inputs, [[maybe_unused]] std::span<float*> outputs,
                         [[maybe_unused]] std::int32_t frames) SIVRAY_NONBLOCKING {}

  /// Whether everything that the last block rendered is known to be zero.
  virtual bool gaveSilence() const SIVRAY_NONBLOCKING { return false; }

  /// The host's rate has changed. `ratio` is the engine's rate divided by the host's.
  virtual void onSampleRate([[maybe_unused]] float ratio, [[maybe_unused]] double engineRate) {}

  /// The smallest block, 32 host frames.
  virtual void onBlockSize([[maybe_unused]] std::int32_t size) SIVRAY_NONBLOCKING {}

  /// A MIDI message: status in bits 31 to 24, data bytes in bits 23 to 16 and 15 to 8. `frame` counts engine frames
  /// from the start of the next onProcess and is less than its `frames`. If the converter's queue overflows, messages
  /// come before their block instead, with frames of any size.
  virtual void onMidi([[maybe_unused]] std::uint32_t packed, [[maybe_unused]] std::int32_t frame) SIVRAY_NONBLOCKING {}

  /// Called before and after all other calls of a host's block.
  virtual void onBeginBlock() SIVRAY_NONBLOCKING {}
  virtual void onEndBlock() SIVRAY_NONBLOCKING {}

  /// The longest host block so far, in host frames.
  virtual void onMaxBlockSize([[maybe_unused]] std::int32_t size) SIVRAY_NONBLOCKING {}
};

}  // namespace tesh::bramel::vst
