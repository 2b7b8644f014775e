// The resampler: any rate to any other, by a polyphase filter and a straight line between neighbouring phases.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/resample/CFscBase.h"

namespace tesh::bramel::vst {

/// The position moves by a fixed step in Q14 phases with a remainder in single precision, the same on all channels. How
/// a stream is cut into calls changes none of its samples. Where input and history are silent only the position moves.
class CFsCwInterpolation : public CFscBase {
 public:
  explicit CFsCwInterpolation(std::size_t channelCount, const ResampleKernel& resampleKernel = bestResampleKernel());

  void reset() override;

  /// Resamples `frames` frames and gives the number of output frames, which differs by one from call to call. Makes
  /// nothing without channels or before `configure`. Audio thread.
  std::size_t process(const float* const* inputs, float* const* outputs, std::size_t frames) override;

  /// Designs the filter for `fromRate` in Hz, `length` coefficients in `newPhases` phases, and begins from silence. A
  /// ratio whose step is below one or above 32 bits of Q14 phases leaves nothing configured. Allocates.
  void configure(std::int32_t length, std::int32_t fromRate, float toRate, std::int32_t cutoffHz,
                 std::int32_t newPhases, double gainDb);

 private:
  bool isSilent(const float* const* inputs, std::size_t offset, std::size_t frames) const;
  std::size_t filter(float* const* outputs, std::size_t made, std::size_t frames);
  std::size_t rest(float* const* outputs, std::size_t made, std::size_t frames);

  ResampleKernelRun run;
  ResampleStep stride;
  ResamplePosition position;
};

}  // namespace tesh::bramel::vst
