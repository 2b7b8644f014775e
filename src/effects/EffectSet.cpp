// The order of construction, and the class of each type id.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/EffectSet.h"

#include "effects/delays/SivrayFxBpmSyncDelay.h"
#include "effects/delays/SivrayFxShortDelay.h"
#include "effects/dynamics/Pump.h"
#include "effects/dynamics/Q60393Distortion.h"
#include "effects/dynamics/Q60393Drive.h"
#include "effects/dynamics/SivrayFxCompressor.h"
#include "effects/dynamics/SivrayFxDecimator.h"
#include "effects/dynamics/SivrayFxKilnode.h"
#include "effects/dynamics/SivrayFxStereoCompressor.h"
#include "effects/filters/CombFilter.h"
#include "effects/filters/PeakingEQ.h"
#include "effects/filters/SivrayFxEqualizer.h"
#include "effects/filters/SivrayFxTalkingModulator.h"
#include "effects/filters/SivrayFxTolvanFilter.h"
#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/SivrayFxBypass.h"
#include "effects/modulation/MarloChorus.h"
#include "effects/modulation/MarloEnsemble.h"
#include "effects/modulation/MarloPhase.h"
#include "effects/modulation/Q60393Autopan.h"
#include "effects/modulation/Q60393Phaser.h"
#include "effects/modulation/Q60393Tremolo.h"
#include "effects/modulation/Ringmod.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"
#include "effects/reverbs/GateReverb.h"
#include "effects/reverbs/SivrayFxReverb.h"
#include "effects/reverbs/SivrayFxReverbSmoothHallAdapter.h"
#include "effects/rhythmic/SivrayFxGrainShifter.h"
#include "effects/rhythmic/Slicer.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr std::array<int, kEffectTypeCount> kConstructionOrder{
    0, 1, 2, 3, 12, 13, 11, 14, 15, 4, 22, 21, 23, 17, 25, 26, 27, 29, 24, 6, 7, 5, 18, 20, 19, 16, 8, 28, 9, 10};

using Maker = std::unique_ptr<SivrayFx> (*)();

template <typename Effect>
std::unique_ptr<SivrayFx> make() {
  return std::make_unique<Effect>();
}

/// By type id.
constexpr std::array<Maker, kEffectTypeCount> kMakers{
    make<SivrayFxBypass>,                                                 // 0
    make<SivrayFxIMarloEffects<MarloChorus>>,                             // 1
    make<SivrayFxIMarloEffects<MarloPhase>>,                              // 2
    make<SivrayFxIMarloEffects<MarloEnsemble>>,                           // 3
    make<SivrayFxChorusFlanger>,                                          // 4
    make<EffectAdapter<Q60393Phaser>>,                                    // 5
    make<EffectAdapter<Q60393Tremolo>>,                                   // 6
    make<EffectAdapter<Q60393Autopan>>,                                   // 7
    make<EffectAdapter<Pump>>,                                            // 8
    make<EffectAdapter<Slicer>>,                                          // 9
    make<EffectAdapter<Ringmod>>,                                         // 10
    make<SivrayFxGrainShifter>,                                           // 11
    make<SivrayFxShortDelay>,                                             // 12
    make<SivrayFxBpmSyncDelay>,                                           // 13
    make<SivrayFxReverb>,                                                 // 14
    make<SivrayFxReverbSmoothHallAdapter>,                                // 15
    make<EffectAdapter2<GateReverb>>,                                     // 16
    make<SivrayFxCompressor>,                                             // 17
    make<EffectAdapter<SivrayFxStereoCompressor::StereoCompressorImpl>>,  // 18
    make<EffectAdapter<Q60393Drive>>,                                     // 19
    make<EffectAdapter<Q60393Distortion>>,                                // 20
    make<SivrayFxKilnode>,                                                // 21
    make<EffectAdapter<SivrayFxDecimator>>,                               // 22
    make<SivrayFxEqualizer>,                                              // 23
    make<EffectAdapter<PeakingEQ>>,                                       // 24
    make<SivrayFxTolvanFilter<TolvanMode::kLowpass>>,                     // 25
    make<SivrayFxTolvanFilter<TolvanMode::kHighpass>>,                    // 26
    make<SivrayFxTolvanFilter<TolvanMode::kBandpass>>,                    // 27
    make<EffectAdapter<CombFilter>>,                                      // 28
    make<SivrayFxTalkingModulator>,                                       // 29
};

}  // namespace

EffectSet makeEffects(SivrayFxMemoryAssigner& memory) {
  EffectSet effects;
  for (const int type : kConstructionOrder) {
    std::unique_ptr<SivrayFx>& effect = effects[static_cast<std::size_t>(type)];
    effect = kMakers[static_cast<std::size_t>(type)]();
    if (auto* const user = dynamic_cast<SivrayFxMemoryUser*>(effect.get())) {
      memory.add(user);
    }
  }
  for (const int type : kConstructionOrder) {
    SivrayFx& effect = *effects[static_cast<std::size_t>(type)];
    effect.wake();
    effect.reset();
    effect.sleep();
  }
  return effects;
}

}  // namespace tesh::bramel::plugin::sivray::effects
