// The phase tables of a polyphase filter and the history of its signal.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/RealTime.h"
#include "host/resample/CFirLpfBase.h"
#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {

/// An output frame needs a phase and the next one, so their tables are interleaved. Likewise a history interleaves two
/// channels; a last channel without a partner is stored twice. A history is linear, so that every window is one piece
/// of memory; when it is full, its newest frames are copied to the front.
class CFscBase : public CFirLpfBase {
 public:
  static constexpr std::size_t kMaxChannels = 8;
  static constexpr std::int32_t kMaxPhases = 511;

  /// For `channelCount` channels, at most kMaxChannels.
  explicit CFscBase(std::size_t channelCount);

  std::int32_t phases() const override { return phaseCount; }
  std::int32_t step() const override { return phaseStep; }
  void reset() override;

  /// Designs the filter at `newPhases` (1 to kMaxPhases) times the signal's rate, splits it into as many phases and
  /// resets. Lengths, rates and gain as in `design`. Allocates.
  virtual void buildTables(std::int32_t length, std::int32_t rate, std::int32_t cutoffHz, std::int32_t newPhases,
                           std::int32_t newStep, double gainDb);

 protected:
  /// The most input frames that `store` takes.
  static constexpr std::size_t kPartFrames = StepRun::kMostFrames;

  /// Appends up to kPartFrames frames to every channel's history.
  void store(const float* const* inputs, std::size_t offset, std::size_t frames) SIVRAY_NONBLOCKING;

  /// The `tapsPerPhase` newest frames at the time of the first of the last `frames` frames, of channels 2 * `pair` and
  /// 2 * `pair` + 1, interleaved.
  const float* window(std::size_t pair, std::size_t frames) const {
    return history[pair].data() + 2 * (writeIndex - frames - (tapsPerPhase - 1));
  }

  bool hasSilentHistory() const { return silentFrames >= tapsPerPhase - 1; }

  /// The second channel of a pair.
  std::size_t rightOf(std::size_t pair) const { return std::min(2 * pair + 1, channels - 1); }

  const std::size_t channels;
  /// Phase pairs 0 and 1, 1 and 2, and so on. Last comes the pair of the last phase and phase 0 of the next frame.
  std::vector<TapGroup> tables;
  std::size_t tapsPerPhase = 4;  ///< A multiple of 4.
  std::size_t silentFrames = 0;  ///< Silent frames at the end of the history, counted up to tapsPerPhase.

 private:
  float tap(std::int32_t phase, std::size_t index) const;

  std::vector<std::vector<float>> history;  ///< By pairs of channels.
  std::size_t writeIndex = 0;               ///< Where the next frame goes; common to all channels.
  std::int32_t phaseCount = 0;
  std::int32_t phaseStep = 1;
  std::int32_t prototypeLength = 0;
};

}  // namespace tesh::bramel::vst
