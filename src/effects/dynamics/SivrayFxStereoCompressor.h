// The compressor for a whole mix.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"
#include "effects/dynamics/CompressorGain.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

struct SivrayFxStereoCompressor {
  /// The core of "Master Compressor": Edit1 is the sensitivity, Edit2 the attack.
  class StereoCompressorImpl {
   public:
    StereoCompressorImpl();

    void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

    /// Index 0 sensitivity, 1 attack; the value is masked to 7 bits and given back. Other indices give 0. Any thread.
    int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

    void reset() SIVRAY_NONBLOCKING;

    bool immediate = false;

   private:
    template <bool kResting>
    void render(std::int16_t* left, std::int16_t* right, unsigned count, std::int32_t sensTo);

    Relaxed<std::int32_t> sensTarget;
    Relaxed<std::int32_t> attack;
    SmoothedValue sens;
    SmoothedValue output;
    CompressorGain law;
  };
};

}  // namespace tesh::bramel::plugin::sivray::effects
