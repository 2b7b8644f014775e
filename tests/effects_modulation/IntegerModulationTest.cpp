// The integer modulation effects against plain models of their laws.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <memory>
#include <numeric>

#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/TempoTables.h"
#include "effects/modulation/LfoTables.h"
#include "effects/modulation/Q60393Autopan.h"
#include "effects/modulation/Q60393Phaser.h"
#include "effects/modulation/Q60393Tremolo.h"
#include "effects/modulation/Ringmod.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"
#include "effects_modulation/PlainModel.h"

namespace {

using namespace scene;
using namespace tesh::bramel::plugin::sivray::effects;

constexpr std::int64_t kLead = 208732160;

std::int64_t stepOf(std::int64_t knob) { return lfoTable[static_cast<std::size_t>(knob)]; }

struct FlangerModel : PlainModel {
  std::int64_t step = 0, feedback = 0, wet = 0, newStep = 0, newFeedback = 0, newWet = 0;
  Glide feedbackState, wetState;
  std::int32_t phase = 0;
  std::int64_t follow[2]{}, line[2][1024]{};
  std::int64_t write = 0;

  void edit(unsigned index, std::int64_t i) override {
    if (index == 0) {
      newStep = stepOf(i);
    } else if (index == 1) {
      newWet = std::min<std::int64_t>(1024 * i, 32767);
      newFeedback = i <= 32 ? 0 : (i - 32) * 32440 / 95;
    }
  }
  void grid() override { step = newStep, feedback = newFeedback, wet = newWet; }
  void reset() override {
    std::fill_n(&line[0][0], 2048, 0);
    follow[0] = follow[1] = 0;
    feedbackState.jump(feedback);
    wetState.jump(wet);
    phase = 0;
  }
  void channel(int c, std::int64_t p, std::int64_t& x) {
    follow[c] = sat(((std::abs(p) >> 16) + follow[c] * 255) >> 8);
    const std::int64_t delay = follow[c] * 667 + 196608;
    const std::int64_t i = (write - (delay >> 16)) & 1023;
    const std::int64_t a = line[c][i];
    const std::int64_t b = line[c][(i - 1) & 1023];
    const std::int64_t tap = leaks(a + (wrap((b - a) * (delay & 65535)) >> 16), 3);
    line[c][write] = sat(x + ((feedbackState.value() * tap) >> 15));
    x = sat(x + ((wetState.value() * tap) >> 15));
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    wetState.to(wet, immediate);
    feedbackState.to(feedback, immediate);
    phase = wrap(phase + step);
    channel(0, phase, l);
    channel(1, wrap(phase + kLead), r);
    write = (write + 1) & 1023;
  }
};

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

/// Tremolo, and auto pan when `pans`.
struct GainModel : PlainModel {
  explicit GainModel(bool isPan) : pans(isPan) { update(); }

  bool pans, restart = false;
  std::int64_t knob = 72, step = 0, flatness = 32767 - linear(63), smooth[2]{};
  float bpm = 120.0F;
  Glide flat;
  std::int32_t up = 2147483647, down = 2147483647;
  std::int64_t type = 1;

  void update() {
    step = pans ? tempoStep(static_cast<int>(knob), bpm) : 2 * (2147483647 / (3 * ((127 - knob) * (127 - knob) + 735)));
  }
  void edit(unsigned index, std::int64_t i) override {
    if (index == 0) {
      knob = i;
    } else if (index == 1) {
      flatness = 32767 - linear(i);
    }
    update();
  }
  void setTempo(int tenths) override {
    bpm = static_cast<float>(tenths) / 10.0F;
    update();
  }
  void reset() override {
    flat.jump(flatness);
    smooth[0] = smooth[1] = 0;
    restart = true;
  }
  std::int64_t shape(std::int64_t u, std::int64_t d) const {
    const std::int64_t shapes[]{(u >> 1) + 1073741823, std::abs(u), u < 1 ? 0 : 2147483647, (d >> 1) + 1073741823,
                                d > 0 ? 2147483647 : 0};
    return shapes[type];
  }
  std::int64_t output(int c, std::int64_t value, std::int64_t x) {
    std::int64_t& s = smooth[c];
    s += ((value >> 15) - (s >> 15)) * 2212;
    const std::int64_t g = (((s * s) >> 31) * s) >> 46;
    const std::int64_t f2 = (flat.value() * flat.value()) >> 15;
    return sat(((f2 + g - ((g * f2) >> 15)) * x) >> 15);
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    flat.to(flatness, immediate);
    const std::int64_t x = (l + r) >> 1;
    if (restart) {
      up = down = 2147483647;
      restart = false;
    }
    down = wrap(down - step);
    up = wrap(up + step);
    const std::int64_t spread = pans ? 2147418112 : 0;
    l = output(0, shape(up, down), x);
    r = output(1, shape(wrap(up + spread), wrap(down + spread)), x);
  }
};

struct RingModel : PlainModel {
  std::int64_t knobs[2]{64, 64}, live[2]{64, 64};
  Glide frequency, balance;
  std::int32_t phase = 0;

  std::int64_t hertz() const { return (linear(live[0]) * 12288) >> 15; }
  void edit(unsigned index, std::int64_t i) override {
    if (index < 2) {
      knobs[index] = i;
    }
  }
  void grid() override { std::copy_n(knobs, 2, live); }
  void reset() override {
    frequency.jump(hertz());
    balance.jump(linear(live[1]));
    phase = 0;
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    balance.to(linear(live[1]), immediate);
    const std::int64_t dry = (1073741823 - balance.state) >> 15;
    frequency.to(hertz(), immediate);
    phase = wrap(phase + frequency.state);
    const std::int64_t m = clampTo(frequency.state << 8, 1073741823);
    const std::int64_t p = phase >> 15;
    const std::int64_t q = phase >> 16;
    const std::int64_t s = (((32767 - std::abs(p)) * q) >> 15) + q;
    const std::int64_t carrier = sat((((m >> 15) * s) >> 15) + ((1073741823 - m) >> 15));
    for (std::int64_t* x : {&l, &r}) {
      *x = clampTo(((carrier * *x) >> 15) * balance.value() + dry * *x, 536870911) >> 14;
    }
  }
};

TEST(IntegerModulation, EveryEffectMatchesItsPlainModelThroughRandomScenes) {
  playScenes<SivrayFxChorusFlanger>(FlangerModel{});
  playScenes<EffectAdapter<Q60393Phaser>>(PhaserModel{});
  playScenes<EffectAdapter<Q60393Tremolo>>(GainModel{false});
  playScenes<EffectAdapter<Q60393Autopan>>(GainModel{true});
  playScenes<EffectAdapter<Ringmod>>(RingModel{});
}

TEST(IntegerModulation, SpeedTableHoldsItsEndsItsOrderAndItsSums) {
  EXPECT_EQ(lfoTable.front(), 0U);
  EXPECT_EQ(lfoTable.back(), 33554432U);
  EXPECT_TRUE(std::is_sorted(lfoTable.begin(), lfoTable.end()));
  std::uint64_t sum = 0;
  std::uint64_t weighted = 0;
  for (std::size_t i = 0; i < lfoTable.size(); ++i) {
    sum += lfoTable[i];
    weighted += (i + 1) * lfoTable[i];
  }
  EXPECT_EQ(sum, 548402541U);
  EXPECT_EQ(weighted, 62561943812U);
}

TEST(IntegerModulation, EndsOfTheKnobsBehaveAsTheirNamesSay) {
  SivrayFxChorusFlanger flanger;  // depth 0: neither wet nor feedback
  Stereo sound = constantSound(500, -12345);
  process(flanger, sound);
  EXPECT_EQ(sound.left, std::vector<std::int16_t>(500, -12345));

  EffectAdapter<Ringmod> ring;  // balance 0: twice the input, limited
  ring.setParameter(3, 0);
  ring.setImmediate(true);
  Stereo quiet = constantSound(100, 1000);
  process(ring, quiet);
  EXPECT_EQ(quiet.left.back(), 1999);
  ring.setParameter(2, 0);  // frequency 0 and full balance: a constant carrier
  ring.setParameter(3, 127);
  Stereo loud = constantSound(200, 20000);
  process(ring, loud);
  EXPECT_EQ(loud.right.back(), 32767);
}

TEST(IntegerModulation, OtherIndicesAreIgnoredAndWrongValuesMasked) {
  SivrayFxChorusFlanger direct;
  EffectAdapter<Q60393Phaser> adapted;
  EXPECT_EQ(direct.setParameter(0, 55), 0);
  EXPECT_EQ(direct.setParameter(3, 128 + 5), 5);
  EXPECT_EQ(adapted.setParameter(1, 55), 55);
  EXPECT_EQ(adapted.setParameter(99, 55), 0);
  EXPECT_EQ(adapted.setParameter(2, -1), 127);
  StereoBlock nothing;
  adapted.process(nothing, 0);
}

TEST(IntegerModulation, KnobsMayTurnWhileTheEffectsRun) {
  SivrayFxChorusFlanger flanger;
  EffectAdapter<Q60393Phaser> phaser;
  EffectAdapter<Q60393Tremolo> tremolo;
  EffectAdapter<Q60393Autopan> autopan;
  EffectAdapter<Ringmod> ring;
  for (SivrayFx* effect : std::initializer_list<SivrayFx*>{&flanger, &phaser, &tremolo, &autopan, &ring}) {
    turnKnobsWhileItRuns(*effect);
  }
}

}  // namespace
