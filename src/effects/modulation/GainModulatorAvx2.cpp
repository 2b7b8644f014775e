// The runs of tremolo and auto pan in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <algorithm>

#include "core/VectorCode.h"
#include "effects/interfaces/SampleLanes.h"
#include "effects/modulation/Q60393Autopan.h"
#include "effects/modulation/Q60393Tremolo.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/SampleLanesAvx2.h"

#include "effects/modulation/GainModulatorStep.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned Q60393Tremolo::runAvx2(Q60393Tremolo& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runModulated<SamplesAvx2>(law, left, right, count);
}

unsigned Q60393Autopan::runAvx2(Q60393Autopan& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runModulated<SamplesAvx2>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
