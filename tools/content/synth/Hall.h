// A hall: long reverberation, denser than a room's separate echoes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/synth/Random.h"
#include "content/synth/Signal.h"

namespace sivray::content {

struct HallSettings {
  double amount = 0.0;   ///< Level of the hall relative to the drum, 0 to 2.
  double seconds = 1.5;  ///< Time in which it falls by 60 dB.
  double bright = 6000;  ///< Cut-off of the low-pass inside the loop, in Hz: high frequencies decay faster.
};

/// Adds the hall to one channel, in place, without making it longer. `own` must differ between channels.
void addHall(Signal& signal, Random own, const HallSettings& hall);

}  // namespace sivray::content
