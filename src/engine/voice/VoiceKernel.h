// The per-sample work of the voices: one kernel per instruction set. All kernels give identical samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "core/RealTime.h"
#include "engine/voice/VoiceBank.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray {

class RampBank;

/// The buses that the lanes of a run send to. A bus that is not fed gets zeros.
enum class Buses : std::uint8_t { dry, effect, both };

/// The buses that voices are mixed to: interleaved left and right words, limited to -32767 .. 32767. Up to kBusSlack
/// frames behind a run's last frame may be overwritten.
struct BusWords {
  std::int16_t* dry = nullptr;
  std::int16_t* effect = nullptr;

  BusWords from(int frame) const { return {dry + 2 * frame, effect + 2 * frame}; }
};
inline constexpr int kBusSlack = 3;

/// Words of a frame of taps: for each group of four lanes the left samples of all four, then the right ones. A group
/// without a sounding lane is not written.
inline constexpr int kTapWords = 16;

/// A stretch of frames in which no voice starts, ends or changes its envelope's level.
struct VoiceRun {
  VoiceBank* bank = nullptr;
  RampBank* ramps = nullptr;
  const std::int16_t* samples = nullptr;  ///< start of all sample memory
  LaneWords step;                         ///< signed Q12, 0 where the wave has ended
  LaneWords watched;                      ///< -1 where the run must stop once the fade has closed.
  BusWords output;
  int frames = 0;       ///< at least 1
  int voices = 0;       ///< 1 to 8: the lanes that sound
  unsigned moving = 0;  ///< rampBit of each ramp that moves
  Buses fed = Buses::both;
  bool fading = false;  ///< a lane is fading or watched
  /// Null, or frames of kTapWords words, 32-byte aligned: the lanes' samples before their sends.
  std::int16_t* taps = nullptr;
};

/// One instruction set. `run` returns the number of rendered frames: all, or fewer if a ramp reached its target or a
/// watched fade closed in the last one. It updates the VoiceBank fields that kernels work on. The ramps must have been
/// ticked for the first frame. `tick` is RampBank::tick; it returns whether a ramp has reached its target.
struct VoiceKernel {
  const char* name;
  platform::VectorSet needs;  ///< What the processor must have.
  int (*run)(const VoiceRun& run) SIVRAY_NONBLOCKING;
  bool (*tick)(RampBank& ramps) SIVRAY_NONBLOCKING;
};

/// Every compiled kernel, the slowest first, including those that this processor cannot run.
std::span<const VoiceKernel> voiceKernels();

/// The fastest kernel that this processor can run.
const VoiceKernel& bestVoiceKernel();

}  // namespace tesh::bramel::plugin::sivray
