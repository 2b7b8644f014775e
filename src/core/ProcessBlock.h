// One block of audio with its messages, as the shell passes it through the macro layer to the generator.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "core/LockFreeRing.h"
#include "core/MidiEvent.h"

namespace tesh::vimo {

/// One block, at the engine's rate. It owns nothing. Any pointer may be null, except `outputs` if `frames` is above 0.
struct ProcessBlock {
  float** inputs = nullptr;
  float** outputs = nullptr;
  std::int32_t inputCount = 0;  ///< Channels: 2 if `inputs` is set, else 0.
  std::int32_t outputCount = 2;
  std::int32_t frames = 0;
  TimedValueRing* automationRing = nullptr;    ///< Engine parameters, read by the generator.
  TimedValueRing* notificationRing = nullptr;  ///< Movements of macros, read after the generator has run.
  std::vector<MidiEvent>* midiIn = nullptr;
  std::vector<MidiEvent>* midiOut = nullptr;
};

}  // namespace tesh::vimo
