// The master level, and the output stage whose gain it sets.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>

#include "core/RealTime.h"
#include "engine/OutputStage.h"
#include "parameters/Q57214DrumGenericParameter.h"

namespace tesh::bramel::plugin::sivray {

/// The gain starts at 0 and moves smoothly to the level's gain, so the engine is silent until the level is set for the
/// first time. Any thread may set values; rendering belongs to the audio thread.
class GlobalSaveParameterDispatcher : public IAudioProcessableTmplt<std::int32_t> {
 public:
  GlobalSaveParameterDispatcher();

  int count() const override { return group.count(); }

  /// Stores the level as given; its lower seven bits select the gain.
  int setValue(int index, std::int32_t* value) override;
  std::int32_t value(int index) const override { return group.value(index); }
  std::string format(int index, std::int32_t value) const override { return group.format(index, value); }
  const ParameterRow* info(int index) const override { return group.info(index); }
  int indexOf(std::string_view name) const override { return group.indexOf(name); }

  /// Runs the output stage in place on channels 2 and 3 of an interleaved block of four channels: the integer
  /// counterpart of `render`.
  void processAudio(std::int32_t* block, int frames) SIVRAY_NONBLOCKING override;

  /// Adds the two buses, runs the output stage and converts to floats. The smoothed gain continues from the previous
  /// block. `dry` holds left and right interleaved; an effect bus of null pointers is silent.
  void render(const std::int16_t* dry, BusSamples wet, OutputChannels out, int frames) SIVRAY_NONBLOCKING;

  /// Moves the gain on by `frames` frames of silence. Silence stays silence at any gain.
  void skip(int frames) SIVRAY_NONBLOCKING;

 private:
  /// Moves the gain on by one sample and returns it.
  std::int32_t glide(std::int32_t target);

  static constexpr int kTopLevel = 127;  ///< 127: all bits of a level.
  static constexpr std::array<ParameterRow, 1> kRows{{{"Master OUT", 0, kTopLevel, 100}}};

  Q57214DrumGenericParameter group{kRows};
  std::array<std::int16_t, 128> table{};  ///< Gains by level, Q14.
  std::atomic<std::int32_t> outputTarget{0};
  std::int32_t outputGain = 0;
  const OutputKernel& kernel = bestOutputKernel();
};

}  // namespace tesh::bramel::plugin::sivray
