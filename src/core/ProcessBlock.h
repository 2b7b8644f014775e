// One block of audio with its messages, as the shell passes it through the macro layer to the generator.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "core/LockFreeRing.h"
#include "core/MidiEvent.h"

namespace tesh::vimo {

/// Channel counts of a block: the main out alone, or the main out, eight pads and the effect, in this order, two
/// channels each.
inline constexpr std::int32_t kMainChannels = 2;
inline constexpr std::int32_t kPadChannels = 16;
inline constexpr std::int32_t kAllChannels = kMainChannels + kPadChannels + 2;

/// One block at the engine's rate. Owns nothing. Any pointer may be null, except, if `frames` is above 0, `outputs` and
/// its main channels.
struct ProcessBlock {
  float** inputs = nullptr;
  float** outputs = nullptr;
  std::int32_t inputCount = 0;               ///< Channels: 2 if `inputs` is set, else 0.
  std::int32_t outputCount = kMainChannels;  ///< Channels: kMainChannels or kAllChannels.
  std::int32_t frames = 0;
  TimedValueRing* automationRing = nullptr;    ///< Engine parameters, read by the generator.
  TimedValueRing* notificationRing = nullptr;  ///< Movements of macros, read after the generator has run.
  std::vector<MidiEvent>* midiIn = nullptr;
  std::vector<MidiEvent>* midiOut = nullptr;
  bool isSilent = false;  ///< Set by the generator if it knows that all outputs are zero.
};

}  // namespace tesh::vimo
