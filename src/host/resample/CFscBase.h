// The tables and the memory of a polyphase filter.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "core/RealTime.h"
#include "host/resample/CFirLpfBase.h"
#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {

/// A filter in phases. The tables of a phase and of the one after it lie interleaved, as both are needed at once. The
/// history of a channel is linear: a window of it is one piece, and its newest frames move to its front now and then.
class CFscBase : public CFirLpfBase {
 public:
  static constexpr std::size_t kMaxChannels = 8;
  static constexpr std::int32_t kMaxPhases = 511;

  /// Of `channelCount` channels, kMaxChannels at most.
  explicit CFscBase(std::size_t channelCount);

  std::int32_t phases() const override { return phaseCount; }
  std::int32_t step() const override { return phaseStep; }
  void reset() override;

  /// Designs the prototype, splits it into `newPhases` phases (kMaxPhases at most) and resets. Allocates.
  virtual void buildTables(std::int32_t length, std::int32_t rate, std::int32_t cutoffHz, std::int32_t newPhases,
                           std::int32_t newStep, double gainDb);

 protected:
  /// Input frames that are taken into the history at a time.
  static constexpr std::size_t kPartFrames = 512;

  /// Appends up to kPartFrames frames to every channel's history.
  void store(const float* const* inputs, std::size_t offset, std::size_t frames) SIVRAY_NONBLOCKING;

  /// The window that ends with the newest of the last `frames` frames' first one.
  const float* window(std::size_t channel, std::size_t frames) const {
    return history[channel].data() + writeIndex - frames - (tapsPerPhase - 1);
  }

  const std::size_t channels;
  std::vector<TablePair> tables;  ///< Of phase 0 and 1, 1 and 2, and so on to the prototype one input sample later.
  std::size_t tapsPerPhase = 4;   ///< A multiple of 4.
  std::size_t silentFrames = 0;   ///< Frames since something sounded: all of the history where it is not shorter.

 private:
  float tap(std::int32_t phase, std::size_t index) const;

  std::vector<std::vector<float>> history;
  std::size_t writeIndex = 0;  ///< Where the next frame goes; common to all channels.
  std::int32_t phaseCount = 0;
  std::int32_t phaseStep = 1;
  std::int32_t prototypeLength = 0;
};

}  // namespace tesh::bramel::vst
