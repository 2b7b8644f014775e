// Tremolo: both channels' gain follows one oscillator of free speed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"
#include "effects/modulation/GainModulator.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Tremolo": Edit1 is the speed (0.87 to 20 Hz), Edit2 the depth.
class Q60393Tremolo : public GainModulator {
 public:
  Q60393Tremolo() : GainModulator(0) { setEdit(0, 72); }

  /// Index 0 speed, masked to 7 bits; the others as `GainModulator::setShape`. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;
};

}  // namespace tesh::bramel::plugin::sivray::effects
