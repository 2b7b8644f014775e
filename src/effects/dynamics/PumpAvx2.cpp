// The pump's run in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/VectorCode.h"
#include "effects/dynamics/Pump.h"
#include "effects/interfaces/OneSample.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/dynamics/PumpStep.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned Pump::runAvx2(Pump& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runBeat<Samples256>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
