// The class of each of the thirty effects.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/delays/SivrayFxBpmSyncDelay.h"
#include "effects/delays/SivrayFxShortDelay.h"
#include "effects/dynamics/Q60393Distortion.h"
#include "effects/dynamics/Q60393Drive.h"
#include "effects/dynamics/SivrayFxCompressor.h"
#include "effects/dynamics/SivrayFxDecimator.h"
#include "effects/dynamics/SivrayFxKilnode.h"
#include "effects/filters/CombFilter.h"
#include "effects/filters/PeakingEQ.h"
#include "effects/filters/SivrayFxEqualizer.h"
#include "effects/filters/SivrayFxTalkingModulator.h"
#include "effects/filters/SivrayFxTolvanFilter.h"
#include "effects/interfaces/EffectAdapter.h"
#include "effects/modulation/GainModulator.h"
#include "effects/modulation/Q60393Phaser.h"
#include "effects/modulation/Ringmod.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"
#include "effects/modulation/SivrayFxIMarloEffects.h"
#include "effects/reverbs/GateReverb.h"
#include "effects/reverbs/SivrayFxReverb.h"
#include "effects/reverbs/SivrayFxReverbSmoothHallAdapter.h"
#include "effects/rhythmic/BeatGain.h"
#include "effects/rhythmic/SivrayFxGrainShifter.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Passes the block unchanged.
class SivrayFxBypass : public SivrayFx {
 public:
  void process(StereoBlock&, unsigned) override {}
  bool skip(unsigned) override { return true; }
  int setParameter(unsigned index, int value) override {
    return index == kEdit1 || index == kEdit2 ? knobOf(value) : 0;
  }
  void reset() override {}
  void setImmediate(bool) override {}
  void notify(int) override {}
};

/// A list of classes.
template <typename... Effects>
struct EffectList {};

/// By type id.
using EffectClasses = EffectList<                                   //
    SivrayFxBypass,                                                 // 0
    SivrayFxIMarloEffects<MarloChorus>,                             // 1
    SivrayFxIMarloEffects<MarloPhase>,                              // 2
    SivrayFxIMarloEffects<MarloEnsemble>,                           // 3
    SivrayFxChorusFlanger,                                          // 4
    EffectAdapter<Q60393Phaser>,                                    // 5
    EffectAdapter<Q60393Tremolo>,                                   // 6
    EffectAdapter<Q60393Autopan>,                                   // 7
    EffectAdapter<Pump>,                                            // 8
    EffectAdapter<Slicer>,                                          // 9
    EffectAdapter<Ringmod>,                                         // 10
    SivrayFxGrainShifter,                                           // 11
    SivrayFxShortDelay,                                             // 12
    SivrayFxBpmSyncDelay,                                           // 13
    SivrayFxReverb,                                                 // 14
    SivrayFxReverbSmoothHallAdapter,                                // 15
    EffectAdapter2<GateReverb>,                                     // 16
    SivrayFxCompressor,                                             // 17
    EffectAdapter<SivrayFxStereoCompressor::StereoCompressorImpl>,  // 18
    EffectAdapter<Q60393Drive>,                                     // 19
    EffectAdapter<Q60393Distortion>,                                // 20
    SivrayFxKilnode,                                                // 21
    EffectAdapter<SivrayFxDecimator>,                               // 22
    SivrayFxEqualizer,                                              // 23
    EffectAdapter<PeakingEQ>,                                       // 24
    SivrayFxTolvanFilter<TolvanMode::kLowpass>,                     // 25
    SivrayFxTolvanFilter<TolvanMode::kHighpass>,                    // 26
    SivrayFxTolvanFilter<TolvanMode::kBandpass>,                    // 27
    EffectAdapter<CombFilter>,                                      // 28
    SivrayFxTalkingModulator>;                                      // 29

}  // namespace tesh::bramel::plugin::sivray::effects
