// Distortion: a mono highpass, much gain, a curve that folds the wave back, and a cut around 8 kHz.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Distortion": Edit1 is the gain, Edit2 the level. The output is mono.
class Q60393Distortion {
 public:
  Q60393Distortion();

  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 gain, 1 level; the value is masked to 7 bits and given back. Other indices give 0. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  void reset() SIVRAY_NONBLOCKING;

  bool immediate = false;

 private:
  struct Settings {
    std::int32_t gain;
    std::int32_t level;
  };

  /// One sample back and two samples back, of the input and of the output of the two filters.
  struct Memory {
    std::int64_t highpassIn = 0;
    std::int64_t highpassOut = 0;
    std::int64_t in1 = 0;
    std::int64_t in2 = 0;
    std::int64_t out1 = 0;
    std::int64_t out2 = 0;
  };

  static Settings settingsOf(int gainKnob, int levelKnob);
  static std::int64_t highpass(Memory& memory, std::int64_t x);
  static std::int64_t postFilter(Memory& memory, std::int64_t s);

  template <bool kResting>
  void render(std::int16_t* left, std::int16_t* right, unsigned count);

  Relaxed<int> gainKnob = 64;
  Relaxed<int> levelKnob = 73;
  Settings live;
  PendingSettings<Settings> pending;
  SmoothedValue gain;
  SmoothedValue level;
  Memory memory;
};

}  // namespace tesh::bramel::plugin::sivray::effects
