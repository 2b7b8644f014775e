// Runs an effect sample by sample and in every kind of lanes that the processor supports, and compares every sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/EffectScene.h"
#include "effects/interfaces/SivrayFxMemoryManager.h"
#include "platform/CpuFeatures.h"

namespace scene {

using tesh::bramel::platform::VectorLimit;
using tesh::bramel::platform::VectorSet;

/// An effect in registers of `set` at most. Gives delay memory to an effect that needs it.
template <typename Effect>
struct InKind : Effect {
  explicit InKind(VectorSet set) : InKind(VectorLimit(set)) {}

  void render(const Stereo& in, Stereo& out) {
    out = in;
    StereoBlock block = out.block();
    this->process(block, static_cast<unsigned>(out.left.size()));
  }

  tesh::bramel::plugin::sivray::effects::SivrayFxMemoryManager memory;

 private:
  explicit InKind(const VectorLimit&) {
    if constexpr (requires(Effect & effect) { memory.add(&effect); }) {
      memory.add(this);
    }
  }
};

/// Changes something at random: knobs, tempo, immediate mode, or a reset.
template <typename Effect>
void turn(Dice& dice, Effect& effect) {
  using namespace tesh::bramel::plugin::sivray::effects;
  const int value = dice.oneIn(3) ? dice.upTo(8) : dice.upTo(127);
  switch (dice.upTo(5)) {
    case 0:
    case 1:
      effect.setParameter(kEdit1, value);
      break;
    case 2:
    case 3:
      effect.setParameter(kEdit2, dice.oneIn(2) ? 127 : value);
      break;
    case 4:
      effect.setTempo(dice.upTo(dice.oneIn(2) ? 30 : 3000) * (dice.oneIn(3) ? 100 : 1));
      break;
    default:
      effect.setImmediate(dice.oneIn(2));
  }
  if (dice.oneIn(10)) {
    effect.reset();
  }
}

/// Values glide for a small share of the scene and are constant for the rest.
template <typename Effect>
void expectKindsToAgree(unsigned seed, int blocks) {
  for (const VectorSet set : {VectorSet::baseline, VectorSet::avx2}) {
    if (!tesh::bramel::platform::supports(set)) {
      continue;
    }
    InKind<Effect> plain(VectorSet::none);
    InKind<Effect> fast(set);
    Dice dice(seed);
    plain.reset();
    fast.reset();
    Stereo expected;
    Stereo sound;
    for (int b = 0; b < blocks; ++b) {
      if (dice.oneIn(12)) {
        Dice same = dice;
        turn(same, plain);
        turn(dice, fast);
      }
      const Stereo in = dice.input(dice.blockSize());
      plain.render(in, expected);
      fast.render(in, sound);
      ASSERT_EQ(sound, expected) << "set " << static_cast<int>(set) << " seed " << seed << " block " << b;
    }
  }
}

}  // namespace scene
