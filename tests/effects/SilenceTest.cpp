// Effects that skip their silence against the same effects that compute all of it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

#include "effects/EffectTable.h"
#include "effects/SivrayMultiEffector.h"
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
#include "effects/interfaces/SivrayFxMemoryManager.h"
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
#include "effects_interfaces/EffectScene.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

using scene::Dice;
using scene::Stereo;

/// Counts the samples that it skips.
template <typename Effect>
struct Skipping : Effect {
  bool skip(unsigned count) override {
    const bool skips = Effect::skip(count);
    skipped += skips ? count : 0;
    return skips;
  }
  unsigned skipped = 0;
};

template <typename Effect>
struct Plain : Effect {
  bool skip(unsigned) override { return false; }
};

template <typename Effect>
void giveMemory(Effect& effect, SivrayFxMemoryManager& memory) {
  if constexpr (std::is_base_of_v<SivrayFxMemoryUser, Effect>) {
    memory.add(&effect);
  }
}

/// Makes one random change to an effect.
void actAtRandom(Dice& dice, const std::function<void(std::function<void(SivrayFx&)>)>& onBoth) {
  const int value = dice.oneIn(3) ? 127 * dice.upTo(1) : dice.upTo(127);
  switch (dice.upTo(9)) {
    case 0:
      return onBoth([tempo = dice.upTo(3000)](SivrayFx& fx) { fx.setTempo(tempo); });
    case 1:
      return onBoth([on = dice.oneIn(2)](SivrayFx& fx) { fx.setImmediate(on); });
    case 2:
      return onBoth([code = dice.upTo(7)](SivrayFx& fx) { fx.notify(code); });
    case 3:
      return onBoth([](SivrayFx& fx) { fx.restartPhase(); });
    case 4:
      return dice.oneIn(4) ? onBoth([](SivrayFx& fx) { fx.reset(); }) : void();
    default:
      return onBoth(
          [index = 2U + static_cast<unsigned>(dice.upTo(1)), value](SivrayFx& fx) { fx.setParameter(index, value); });
  }
}

/// Plays both through sounds and silences that are long enough for every memory to run empty.
template <typename Effect>
void expectSameSoundAfterSilence(int type) {
  SCOPED_TRACE(effectTypeName(type));
  SivrayFxMemoryManager memory;
  Skipping<Effect> fast;
  Plain<Effect> plain;
  giveMemory(fast, memory);
  SivrayFxMemoryManager memoryOfPlain;
  giveMemory(plain, memoryOfPlain);
  const auto onBoth = [&](const auto& act) {
    act(static_cast<SivrayFx&>(fast));
    act(static_cast<SivrayFx&>(plain));
  };
  onBoth([](SivrayFx& fx) { fx.wake(); });
  onBoth([](SivrayFx& fx) { fx.reset(); });
  Dice dice(static_cast<unsigned>(type) + 1);
  for (int stretch = 0; stretch < 24; ++stretch) {
    // A low level or feedback lets the sound end soon.
    onBoth([low = dice.upTo(10)](SivrayFx& fx) { fx.setParameter(kEdit2, low); });
    int silence = dice.oneIn(4) ? 160000 : dice.upTo(8000);
    // A silence right after a reset finds empty lines and followers that still move.
    const bool isAfterReset = dice.oneIn(3);
    if (isAfterReset) {
      onBoth([](SivrayFx& fx) { fx.reset(); });
    }
    for (int blocks = isAfterReset ? 0 : dice.upTo(12); blocks > 0 || silence > 0; --blocks) {
      if (dice.oneIn(blocks > 0 ? 2 : 20)) {
        actAtRandom(dice, onBoth);
      }
      const int frames = dice.blockSize();
      Stereo a = blocks > 0 ? dice.input(frames) : Stereo(static_cast<std::size_t>(frames));
      silence -= blocks > 0 ? 0 : frames;
      Stereo b = a;
      StereoBlock blockOfFast = a.block();
      StereoBlock blockOfPlain = b.block();
      if (!isZero(blockOfFast, a.left.size()) || !fast.skip(static_cast<unsigned>(frames))) {
        fast.process(blockOfFast, static_cast<unsigned>(frames));
      }
      plain.process(blockOfPlain, static_cast<unsigned>(frames));
      ASSERT_EQ(a, b) << "stretch " << stretch;
    }
  }
  EXPECT_GT(fast.skipped, 20000U);
}

/// By type id.
template <typename... Effects>
void expectAll() {
  int type = 0;
  (expectSameSoundAfterSilence<Effects>(type++), ...);
}

TEST(Silence, EveryEffectSoundsAfterSkippedSilenceAsAfterComputedSilence) {
  expectAll<SivrayFxBypass, SivrayFxIMarloEffects<MarloChorus>, SivrayFxIMarloEffects<MarloPhase>,
            SivrayFxIMarloEffects<MarloEnsemble>, SivrayFxChorusFlanger, EffectAdapter<Q60393Phaser>,
            EffectAdapter<Q60393Tremolo>, EffectAdapter<Q60393Autopan>, EffectAdapter<Pump>, EffectAdapter<Slicer>,
            EffectAdapter<Ringmod>, SivrayFxGrainShifter, SivrayFxShortDelay, SivrayFxBpmSyncDelay, SivrayFxReverb,
            SivrayFxReverbSmoothHallAdapter, EffectAdapter2<GateReverb>, SivrayFxCompressor,
            EffectAdapter<SivrayFxStereoCompressor::StereoCompressorImpl>, EffectAdapter<Q60393Drive>,
            EffectAdapter<Q60393Distortion>, SivrayFxKilnode, EffectAdapter<SivrayFxDecimator>, SivrayFxEqualizer,
            EffectAdapter<PeakingEQ>, SivrayFxTolvanFilter<TolvanMode::kLowpass>,
            SivrayFxTolvanFilter<TolvanMode::kHighpass>, SivrayFxTolvanFilter<TolvanMode::kBandpass>,
            EffectAdapter<CombFilter>, SivrayFxTalkingModulator>();
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
