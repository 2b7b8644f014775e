// The ring modulator's run in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <algorithm>

#include "core/VectorCode.h"
#include "effects/interfaces/SampleLanes.h"
#include "effects/modulation/Ringmod.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/SampleLanesAvx2.h"

#include "effects/modulation/RingmodStep.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned Ringmod::runAvx2(Ringmod& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runLanes<SamplesAvx2>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
