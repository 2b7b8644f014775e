// The reverbs' runs in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "effects/interfaces/SampleLanes.h"
#include "effects/reverbs/GateReverb.h"
#include "effects/reverbs/SivrayFxReverb.h"
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"

// Code between these marks is compiled for AVX2. Inline functions that other files share must stay outside, as they
// have to run on every processor.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif

#include "effects/interfaces/SampleLanesAvx2.h"

#include "effects/reverbs/HallStep.h"
#include "effects/reverbs/NetworkStep.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned SivrayFxReverbSmoothHall::runAvx2(HallFlow& flow, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runLanes<SamplesAvx2>(flow, left, right, count);
}

unsigned RoomReverbLaw::runAvx2(RoomReverbLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runLanes<SamplesAvx2>(law, left, right, count);
}

unsigned GateReverb::runAvx2(GateReverb& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runGated<SamplesAvx2>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
