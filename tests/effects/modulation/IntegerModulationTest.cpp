// The phaser against a plain model, and the table of LFO speeds.
// SPDX-License-Identifier: GPL-3.0-or-later

#include "effects/interfaces/EffectAdapter.h"
#include "effects/modulation/LfoTables.h"
#include "effects/modulation/PlainModel.h"
#include "effects/modulation/Q60393Phaser.h"

namespace {

using namespace scene;
using namespace tesh::bramel::plugin::sivray::effects;

constexpr std::int64_t kLead = 208732160;

std::int64_t stepOf(std::int64_t knob) { return lfoTable[static_cast<std::size_t>(knob)]; }

struct PhaserModel : PlainModel {
  std::int64_t step = stepOf(30), depth = (linear(63) * 16102) >> 15, manual = 29249;
  Glide depthState, manualState, resonance, mix;
  std::int32_t phase = 0;
  std::int64_t s[2][5]{};

  void edit(unsigned index, std::int64_t i) override {
    if (index == 0) {
      step = stepOf(i);
    } else if (index == 1) {
      depth = (linear(i) * 16102) >> 15;
    }
  }
  void reset() override {
    std::fill_n(&s[0][0], 10, 0);
    depthState.jump(depth);
    manualState.jump(manual);
    resonance.jump(17215);
    mix.jump(16512);
    phase = 0;
  }
  std::int64_t channel(std::int64_t* z, std::int64_t p, std::int64_t x) const {
    const std::int64_t tri = std::clamp<std::int64_t>(std::abs(p) >> 16, 0, 32767);
    const std::int64_t a = sat(manualState.value() - ((depthState.value() * tri) >> 15));
    std::int64_t old[5];
    for (int j = 0; j < 5; ++j) {
      old[j] = leaks(z[j], 2);
    }
    z[0] = sat(x + leaks((resonance.value() * z[2]) >> 15, 1));
    for (int j = 1; j < 5; ++j) {
      z[j] = sat(((a * old[j]) >> 15) - ((z[j - 1] * a) >> 15) + old[j - 1]);
      z[j] = j == 2 ? leaks(z[j], 4) : z[j];
    }
    return sat(((z[4] * mix.value()) >> 15) + (((32767 - std::abs(mix.value())) * x) >> 15));
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    depthState.to(depth, immediate);
    manualState.to(manual, immediate);
    resonance.to(17215, immediate);
    mix.to(16512, immediate);
    phase = wrap(phase + step);
    const std::int64_t x = (l + r) >> 1;
    l = channel(s[0], phase, x);
    r = channel(s[1], wrap(phase + kLead), x);
  }
};

TEST(IntegerModulation, PhaserMatchesItsPlainModelThroughRandomScenes) {
  playScenes<EffectAdapter<Q60393Phaser>>(PhaserModel{});
}

TEST(IntegerModulation, SpeedTableHoldsItsEndsAndItsOrder) {
  EXPECT_EQ(lfoTable.front(), 0U);
  EXPECT_EQ(lfoTable.back(), 33554432U);
  EXPECT_TRUE(std::is_sorted(lfoTable.begin(), lfoTable.end()));
}

}  // namespace
