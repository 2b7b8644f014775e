// A small room around a drum: single reflections from floor and walls, then sparse echoes that grow darker.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/synth/Random.h"
#include "content/synth/Signal.h"

namespace sivray::content {

struct RoomSettings {
  double amount = 0.0;   ///< Level of the room relative to the drum, 0 to 1.
  double seconds = 0.3;  ///< Time in which it falls by 60 dB.
  double bright = 7000;  ///< Initial cut-off of the echoes' low-pass, in Hz; it falls over time.
  double early = 0.0;  ///< Level of the first reflections, of floor and near walls within 30 ms, relative to the drum.
};

/// Adds the room to one channel, in place, without making it longer. `own` must differ between channels.
void addRoom(Signal& signal, Random own, const RoomSettings& room);

}  // namespace sivray::content
