// Decimator: holds samples at a lower rate.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/dynamics/DecimatorTables.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Decimator": Edit1 is the rate (44100 down to 1000 Hz), Edit2 the balance.
class SivrayFxDecimator {
 public:
  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 rate, 1 balance; the value is masked to 7 bits and given back. Other indices give 0. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  void reset() SIVRAY_NONBLOCKING;

 private:
  std::uint16_t step = decimatorSteps[64];
  PendingSettings<std::uint16_t> pending{step};
  Relaxed<std::int32_t> wet = linearTable[127];
  std::uint32_t counter = 0;
  std::int32_t holdLeft = 0;
  std::int32_t holdRight = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
