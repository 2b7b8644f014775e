// The delays' runs in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/VectorCode.h"
#include "effects/delays/SivrayFxBpmSyncDelay.h"
#include "effects/delays/SivrayFxShortDelay.h"
#include "effects/interfaces/OneSample.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/delays/BpmDelayStep.h"
#include "effects/delays/ShortDelayStep.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned ShortDelayLaw::runAvx2(ShortDelayLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runLanes<Samples256>(law, left, right, count);
}

unsigned BpmSyncDelayLaw::runAvx2(BpmSyncDelayLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runDelay<Samples256>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
