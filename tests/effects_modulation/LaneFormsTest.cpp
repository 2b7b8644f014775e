// The modulation effects that run on many samples at once, in every form.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloChorus.h"
#include "effects/modulation/MarloEnsemble.h"
#include "effects/modulation/MarloPhase.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"
#include "effects_interfaces/LaneScene.h"

namespace {

using namespace tesh::bramel::plugin::sivray::effects;

TEST(Modulation, EveryFormInLanesSoundsAsTheFormSampleBySample) {
  for (const unsigned seed : {1U, 2U}) {
    scene::expectFormsToAgree<SivrayFxIMarloEffects<MarloChorus>>(seed, 600);
    scene::expectFormsToAgree<SivrayFxIMarloEffects<MarloEnsemble>>(seed, 600);
    scene::expectFormsToAgree<SivrayFxIMarloEffects<MarloPhase>>(seed, 600);
    scene::expectFormsToAgree<SivrayFxChorusFlanger>(seed, 600);
  }
}

}  // namespace
