// What the sample-rate converter calls for every block: the instrument at the engine's own rate.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// The engine's side of the converter. Called on the thread that calls the converter. A plain listener does nothing.
class CFsConvListener {
 public:
  virtual ~CFsConvListener() = default;

  /// Renders `frames` frames at the engine's rate. `inputs` and `outputs` hold two channels; those of `inputs` are null
  /// where the host gave none and its rate is the engine's.
  virtual void onProcess([[maybe_unused]] float** inputs, [[maybe_unused]] float** outputs,
                         [[maybe_unused]] std::int32_t frames) SIVRAY_NONBLOCKING {}

  /// The host's rate has changed. `ratio` is the engine's rate by the host's.
  virtual void onSampleRate([[maybe_unused]] float ratio, [[maybe_unused]] double engineRate) {}
  virtual void onBlockSize([[maybe_unused]] std::int32_t size) SIVRAY_NONBLOCKING {}

  /// A MIDI message: status in bits 31 to 24, data bytes in 23 to 16 and 15 to 8. `frame` lies in the frames of the
  /// next onProcess; messages that overflow the converter's queue come early and keep their frames, whatever those are.
  virtual void onMidi([[maybe_unused]] std::uint32_t packed, [[maybe_unused]] std::int32_t frame) SIVRAY_NONBLOCKING {}
  virtual void onBeginBlock() SIVRAY_NONBLOCKING {}
  virtual void onEndBlock() SIVRAY_NONBLOCKING {}

  /// The longest host block so far, in host frames.
  virtual void onMaxBlockSize([[maybe_unused]] std::int32_t size) SIVRAY_NONBLOCKING {}
};

}  // namespace tesh::bramel::vst
