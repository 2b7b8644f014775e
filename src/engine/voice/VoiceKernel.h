// The choice of instruction sets for the per-sample work of the voices. All kernels give identical samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

struct VoiceBank;
class RampBank;

/// A stretch of frames in which nothing happens to the voices but what the kernel computes itself.
struct VoiceRun {
  VoiceBank* bank = nullptr;
  RampBank* ramps = nullptr;
  const std::int16_t* samples = nullptr;  ///< start of all sample memory
  const std::int32_t* step = nullptr;     ///< per lane, signed Q12, 0 where the wave has ended; 32-byte aligned
  const std::int32_t* watched = nullptr;  ///< per lane, -1 where the run must stop when the fade has closed; aligned
  std::int32_t* output = nullptr;         ///< frames of four words, 16-byte aligned
  int frames = 0;                         ///< at least 1
  int quads = 0;                          ///< 1 or 2
  bool fading = false;                    ///< a lane is fading or watched
};

/// One instruction set. `run` gives the frames that it has rendered: all, or fewer when a ramp has retired or a watched
/// fade has closed in the last of them. The ramps must have been ticked for the first frame.
struct VoiceKernel {
  const char* name;
  bool (*isSupported)();
  int (*run)(const VoiceRun& run) SIVRAY_NONBLOCKING;
  bool (*tick)(RampBank& ramps) SIVRAY_NONBLOCKING;
};

/// Every kernel that was built, the slowest first. The first runs on every processor.
std::span<const VoiceKernel> voiceKernels();

/// The fastest kernel that this processor can run.
const VoiceKernel& bestVoiceKernel();

}  // namespace tesh::bramel::plugin::sivray
