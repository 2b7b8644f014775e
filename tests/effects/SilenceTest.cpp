// Compares effects that skip silence with the same effects computing it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

#include "effects/EffectClasses.h"
#include "effects/EffectTable.h"
#include "effects/interfaces/EffectScene.h"
#include "effects/interfaces/SivrayFxMemoryManager.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

using scene::Dice;
using scene::Stereo;

/// An effect that computes its silence, too.
template <typename Effect>
struct Plain : Effect {
  bool skip(unsigned) override { return false; }
};

/// Counts the samples that an effect skips.
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

/// Plays sounds and silences through both, long enough that all delay memory becomes silent.
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
    // A low level or feedback makes the tail short.
    onBoth([low = dice.upTo(10)](SivrayFx& fx) { fx.setParameter(kEdit2, low); });
    int silence = dice.oneIn(4) ? 160000 : dice.upTo(8000);
    // A reset right before silence: delay lines are empty, and envelope followers still move.
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

template <typename... Effects>
void expectSameSoundOfAll(EffectList<Effects...>) {
  int type = 0;
  (expectSameSoundAfterSilence<Effects>(type++), ...);
}

TEST(Silence, EveryEffectSoundsAfterSkippedSilenceAsAfterComputedSilence) { expectSameSoundOfAll(EffectClasses{}); }

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
