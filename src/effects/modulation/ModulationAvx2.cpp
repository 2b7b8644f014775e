// The runs of the modulation effects in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "core/VectorCode.h"
#include "effects/interfaces/OneSample.h"
#include "effects/modulation/Q60393Autopan.h"
#include "effects/modulation/Q60393Tremolo.h"
#include "effects/modulation/Ringmod.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/modulation/GainModulatorStep.h"
#include "effects/modulation/RingmodStep.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned Q60393Tremolo::runAvx2(Q60393Tremolo& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runModulated<Samples256>(law, left, right, count);
}

unsigned Q60393Autopan::runAvx2(Q60393Autopan& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runModulated<Samples256>(law, left, right, count);
}

unsigned Ringmod::runAvx2(Ringmod& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runLanes<Samples256>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
