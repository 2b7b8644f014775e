// The record of one audio block, as the shell hands it through the macro layer to the generator.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "core/LockFreeRing.h"
#include "core/MidiEvent.h"

namespace tesh::vimo {

/// One block. Nothing is owned; every pointer may be null but `outputs` when `frames` is above 0.
struct ProcessBlock {
  float** inputs = nullptr;
  float** outputs = nullptr;
  std::int32_t inputCount = 0;  ///< 2 when `inputs` is set, else 0.
  std::int32_t outputCount = 2;
  std::int32_t frames = 0;
  TimedValueRing* automationRing = nullptr;    ///< Engine parameters, drained by the generator.
  TimedValueRing* notificationRing = nullptr;  ///< Macro movements, drained after the generator has run.
  std::vector<MidiEvent>* midiIn = nullptr;
  std::vector<MidiEvent>* midiOut = nullptr;
};

}  // namespace tesh::vimo
