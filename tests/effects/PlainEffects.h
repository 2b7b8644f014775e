// All effects in a wrapper of a test's choice, and the wrapper that computes everything sample by sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <memory>

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
#include "platform/CpuFeatures.h"

namespace scene {

namespace fx = tesh::bramel::plugin::sivray::effects;

/// Calls `visit.template operator()<Effect>()` with each effect's class, by type id.
template <typename Visit>
void forEachEffect(Visit&& visit) {
  const auto all = [&visit]<typename... Effects>() { (visit.template operator()<Effects>(), ...); };
  using namespace fx;
  all.template operator()<
      SivrayFxBypass, SivrayFxIMarloEffects<MarloChorus>, SivrayFxIMarloEffects<MarloPhase>,
      SivrayFxIMarloEffects<MarloEnsemble>, SivrayFxChorusFlanger, EffectAdapter<Q60393Phaser>,
      EffectAdapter<Q60393Tremolo>, EffectAdapter<Q60393Autopan>, EffectAdapter<Pump>, EffectAdapter<Slicer>,
      EffectAdapter<Ringmod>, SivrayFxGrainShifter, SivrayFxShortDelay, SivrayFxBpmSyncDelay, SivrayFxReverb,
      SivrayFxReverbSmoothHallAdapter, EffectAdapter2<GateReverb>, SivrayFxCompressor,
      EffectAdapter<SivrayFxStereoCompressor::StereoCompressorImpl>, EffectAdapter<Q60393Drive>,
      EffectAdapter<Q60393Distortion>, SivrayFxKilnode, EffectAdapter<SivrayFxDecimator>, SivrayFxEqualizer,
      EffectAdapter<PeakingEQ>, SivrayFxTolvanFilter<TolvanMode::kLowpass>, SivrayFxTolvanFilter<TolvanMode::kHighpass>,
      SivrayFxTolvanFilter<TolvanMode::kBandpass>, EffectAdapter<CombFilter>, SivrayFxTalkingModulator>();
}

/// An effect that computes its silence.
template <typename Effect>
struct Plain : Effect {
  bool skip(unsigned) override { return false; }
};

/// As makeEffects.
inline fx::EffectSet makePlainEffects(fx::SivrayFxMemoryAssigner& memory) {
  constexpr std::array<std::size_t, 30> kOrder{0,  1,  2,  3,  12, 13, 11, 14, 15, 4,  22, 21, 23, 17, 25,
                                               26, 27, 29, 24, 6,  7,  5,  18, 20, 19, 16, 8,  28, 9,  10};
  namespace platform = tesh::bramel::platform;
  const platform::VectorLimit sampleBySample(platform::VectorSet::none);
  fx::EffectSet effects;
  std::size_t type = 0;
  forEachEffect([&]<typename Effect>() { effects[type++] = std::make_unique<Plain<Effect>>(); });
  for (const bool isMade : {false, true}) {
    for (const std::size_t id : kOrder) {
      if (auto* const user = dynamic_cast<fx::SivrayFxMemoryUser*>(effects[id].get()); user != nullptr && !isMade) {
        memory.add(user);
      }
      if (isMade) {
        effects[id]->wake();
        effects[id]->reset();
        effects[id]->sleep();
      }
    }
  }
  return effects;
}

}  // namespace scene
