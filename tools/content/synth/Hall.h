// A hall: the long reverberation that a room's echoes are too few for.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/synth/Random.h"
#include "content/synth/Signal.h"

namespace sivray::content {

struct HallSettings {
  double amount = 0.0;   ///< Level of the hall against the drum, 0 to 2.
  double seconds = 1.5;  ///< Time in which it falls by 60 dB.
  double bright = 6000;  ///< Low-pass inside the loop, in Hz: the highs fall faster.
};

/// Adds the hall to one channel, in place; the signal keeps its length. `own` makes the channels differ.
void addHall(Signal& signal, Random own, const HallSettings& hall);

}  // namespace sivray::content
