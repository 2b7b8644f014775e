// The resampler between any two rates: a polyphase filter with linear interpolation between neighbouring phases.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"
#include "host/resample/CFscBase.h"
#include "host/resample/StepRun.h"

namespace tesh::bramel::vst {

/// All channels share one read position. It moves by a fixed step in Q14 phases; the step's remainder is kept in single
/// precision. The output does not depend on how the input is cut into calls. While input and history are silent, only
/// the position moves, which saves most of the time.
class CFsCwInterpolation : public CFscBase {
 public:
  /// For `channelCount` channels, at most kMaxChannels.
  explicit CFsCwInterpolation(std::size_t channelCount, const ResampleKernel& resampleKernel = bestResampleKernel());

  void reset() override;

  /// Resamples `frames` frames and returns the number of output frames, which may be one more or one less than in the
  /// call before. Returns 0 if there are no channels or no design. Audio thread.
  std::size_t process(const float* const* inputs, float* const* outputs, std::size_t frames) override {
    return process(inputs, outputs, frames, false);
  }

  /// As above; with `isKnownSilent` the inputs are not read.
  std::size_t process(const float* const* inputs, float* const* outputs, std::size_t frames,
                      bool isKnownSilent) SIVRAY_NONBLOCKING;

  /// Moves the read position to that of another resampler of the same design. Audio thread.
  void moveTo(const CFsCwInterpolation& other) SIVRAY_NONBLOCKING { position = other.position; }

  /// Whether the last call of `process` had silent input and history, so that its output is zeros.
  bool isResting() const { return resting; }

  /// Allows `process` to leave its outputs unwritten while it rests.
  void leaveRestOut() { leavesRestOut = true; }

  /// Whether `skip` may replace a `process` of silent input: after `leaveRestOut`, with a design and a silent history.
  bool canSkip() const { return leavesRestOut && hasSilentHistory() && steps.step().unitsPerInput != 0; }

  /// Moves on by `frames` silent frames, at most 2^14, and returns the number of output frames. They are zeros, which
  /// it does not write. Audio thread.
  std::size_t skip(std::size_t frames) SIVRAY_NONBLOCKING {
    resting = true;
    return steps.pass(position, frames);
  }

  /// Designs a filter of `length` coefficients in `newPhases` phases, with the cut-off in Hz, for a signal at
  /// `fromRate` Hz, and starts from silence. If the step between output frames is below 1 or needs more than 32 bits,
  /// in Q14 phases, later calls of `process` return 0. Allocates.
  void configure(std::int32_t length, std::int32_t fromRate, float toRate, std::int32_t cutoffHz,
                 std::int32_t newPhases, double gainDb);

 private:
  bool isSilent(const float* const* inputs, std::size_t offset, std::size_t frames) const;
  std::size_t filter(float* const* outputs, std::size_t made, std::size_t frames);
  std::size_t rest(float* const* outputs, std::size_t made, std::size_t frames);

  ResampleKernelRun run;
  StepRun steps;
  ResamplePosition position;
  bool leavesRestOut = false;
  bool resting = false;
};

}  // namespace tesh::bramel::vst
