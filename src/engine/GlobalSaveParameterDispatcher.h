// The master level, and the output stage that it drives.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>

#include "core/RealTime.h"
#include "engine/OutputStage.h"
#include "parameters/Q57214DrumGenericParameter.h"

namespace tesh::bramel::plugin::sivray {

/// Where a block's samples go.
struct OutputChannels {
  float* left = nullptr;
  float* right = nullptr;
};

/// The engine is silent until the master level has been set for the first time.
class GlobalSaveParameterDispatcher : public IAudioProcessableTmplt<std::int32_t> {
 public:
  GlobalSaveParameterDispatcher();

  int count() const override { return group.count(); }
  int setValue(int index, std::int32_t* value) override;
  std::int32_t value(int index) const override { return group.value(index); }
  std::string format(int index, std::int32_t value) const override { return group.format(index, value); }
  const ParameterRow* info(int index) const override { return group.info(index); }
  int indexOf(std::string_view name) const override { return group.indexOf(name); }

  /// The stage on channels 2 and 3 of the interleaved block, in place. The same law as `render`.
  void processAudio(std::int32_t* block, int frames) SIVRAY_NONBLOCKING override;

  /// Sums the buses of a block and renders it to floats. The gain glides from sample to sample, across blocks.
  void render(BusSamples dry, BusSamples wet, OutputChannels out, int frames) SIVRAY_NONBLOCKING;

 private:
  /// Moves the gain by one sample and gives it.
  std::int32_t glide(std::int32_t target);

  static constexpr std::array<ParameterRow, 1> kRows{{{"Master OUT", 0, 127, 100}}};

  Q57214DrumGenericParameter group{kRows};
  std::array<std::int16_t, 128> table{};  ///< Gains with 14 fraction bits.
  std::atomic<std::int32_t> outputTarget{0};
  std::int32_t outputGain = 0;
};

}  // namespace tesh::bramel::plugin::sivray
