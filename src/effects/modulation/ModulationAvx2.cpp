// The runs of the modulation effects in sample lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/VectorCode.h"
#include "effects/interfaces/OneSample.h"
#include "effects/modulation/MarloChorus.h"
#include "effects/modulation/MarloEnsemble.h"
#include "effects/modulation/MarloPhase.h"
#include "effects/modulation/Q60393Autopan.h"
#include "effects/modulation/Q60393Phaser.h"
#include "effects/modulation/Q60393Tremolo.h"
#include "effects/modulation/Ringmod.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"
#include "effects/modulation/TriangleLfo.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/modulation/ChorusFlangerStep.h"
#include "effects/modulation/EnsembleStep.h"
#include "effects/modulation/GainModulatorStep.h"
#include "effects/modulation/PhaserStep.h"
#include "effects/modulation/RingmodStep.h"

namespace tesh::bramel::plugin::sivray::effects {

using MarloEight = MarloIn<cofu::registers::Registers256>;

unsigned MarloChorus::runAvx2(MarloChorus& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runMarloChorus<MarloEight>(law, left, right, count);
}

unsigned MarloEnsemble::runAvx2(MarloEnsemble& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runEnsemble<MarloEight>(law, left, right, count);
}

unsigned MarloPhase::runAvx2(MarloPhase& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runMarloPhase<MarloEight>(law, left, right, count);
}

unsigned Q60393Tremolo::runAvx2(Q60393Tremolo& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runModulated<Samples256>(law, left, right, count);
}

unsigned Q60393Autopan::runAvx2(Q60393Autopan& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runModulated<Samples256>(law, left, right, count);
}

unsigned ChorusFlangerLaw::runAvx2(ChorusFlangerLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runFlanger<cofu::registers::Registers256>(law, left, right, count);
}

unsigned Q60393Phaser::runAvx2(Q60393Phaser& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runPhaser<cofu::registers::Registers128Sse41>(law, left, right, count);
}

unsigned Ringmod::runAvx2(Ringmod& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runLanes<Samples256>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
