// A small room around a drum, made of sparse echoes that grow darker.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/synth/Random.h"
#include "content/synth/Signal.h"

namespace sivray::content {

struct RoomSettings {
  double amount = 0.0;   ///< Level of the room against the drum, 0 to 1.
  double seconds = 0.3;  ///< Time in which it falls by 60 dB.
  double bright = 7000;  ///< Where the echoes' low-pass begins, in Hz; it sinks with time.
};

/// Adds the room to one channel, in place; the signal keeps its length.
void addRoom(Signal& signal, Random own, const RoomSettings& room);

}  // namespace sivray::content
