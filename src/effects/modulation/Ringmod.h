// Ring modulator: the input times a sine, which goes over into a constant at the lowest frequencies.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Ring Mod": Edit1 is the frequency (up to 4134 Hz), Edit2 the balance.
class Ringmod {
 public:
  Ringmod() { reset(); }

  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 frequency, 1 balance; the value is masked to 7 bits and given back. Other indices give 0. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  void reset() SIVRAY_NONBLOCKING;

  bool immediate = false;

 private:
  struct Settings {
    std::int32_t frequency;
    std::int32_t balance;
  };

  static constexpr std::int32_t frequencyOfKnob(int knob) {
    return linearTable[static_cast<std::size_t>(knob)] * 12288 >> 15;
  }

  template <bool kResting>
  void render(std::int16_t* left, std::int16_t* right, unsigned count);

  Relaxed<int> frequencyKnob = 64;
  Relaxed<int> balanceKnob = 64;
  Settings live{frequencyOfKnob(64), linearTable[64]};
  PendingSettings<Settings> pending{live};
  SmoothedValue frequency;
  SmoothedValue balance;
  std::int32_t phase = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
