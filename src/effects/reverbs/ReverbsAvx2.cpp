// The reverbs' runs in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/VectorCode.h"
#include "effects/interfaces/OneSample.h"
#include "effects/reverbs/GateReverb.h"
#include "effects/reverbs/SivrayFxReverb.h"
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/reverbs/HallStep.h"
#include "effects/reverbs/NetworkStep.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned SivrayFxReverbSmoothHall::runAvx2(HallFlow& flow, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runLanes<Samples256>(flow, left, right, count);
}

unsigned RoomReverbLaw::runAvx2(RoomReverbLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runLanes<Samples256>(law, left, right, count);
}

unsigned GateReverb::runAvx2(GateReverb& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runGated<Samples256>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
