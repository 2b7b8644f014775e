// The runs of the rhythmic effects in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/VectorCode.h"
#include "effects/interfaces/OneSample.h"
#include "effects/rhythmic/SivrayFxGrainShifter.h"
#include "effects/rhythmic/Slicer.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/rhythmic/GrainStep.h"
#include "effects/rhythmic/SlicerStep.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned GrainShifterLaw::runAvx2(GrainShifterLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runGrains<Samples256>(law, left, right, count);
}

unsigned Slicer::runAvx2(Slicer& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runBeat<Samples256>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
