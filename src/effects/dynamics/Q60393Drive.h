// Drive: bends the wave over above a threshold that sinks as the drive rises, with feedback of the last output.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"
#include "effects/interfaces/StereoLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Drive": Edit1 is the drive, Edit2 the output level.
class Q60393Drive {
 public:
  Q60393Drive();

  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 drive, 1 level; the value is masked to 7 bits and given back. Other indices give 0. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  void reset() SIVRAY_NONBLOCKING;

  bool immediate = false;

 private:
  template <bool kResting>
  void render(std::int16_t* left, std::int16_t* right, unsigned count, std::int32_t driveTo, std::int32_t levelTo);

  Relaxed<std::int32_t> driveTarget;
  Relaxed<std::int32_t> levelTarget;
  SmoothedValue drive;
  SmoothedValue level;
  SmoothedValue threshold;
  StereoLanes preEmphasis;
  StereoLanes lastOutput;
};

}  // namespace tesh::bramel::plugin::sivray::effects
