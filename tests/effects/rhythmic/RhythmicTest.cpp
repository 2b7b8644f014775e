// The grain shifter against a plain model, and the slicer's table and timing.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/LaneScene.h"
#include "effects/interfaces/SivrayFxMemoryManager.h"
#include "effects/modulation/PlainModel.h"
#include "effects/rhythmic/BeatGain.h"
#include "effects/rhythmic/BeatTables.h"
#include "effects/rhythmic/SivrayFxGrainShifter.h"

namespace {

using namespace scene;
using namespace tesh::bramel::plugin::sivray::effects;

struct GrainModel : PlainModel {
  std::array<std::int64_t, 2> knobs{};
  std::int64_t tempo = 15360;
  struct Settings {
    std::int64_t step = 0, delay = 0, mix = 0;
  } pending, live;
  bool dirty = true, realign = false;
  std::int64_t start = 0, phase = 0, record = 0, output = 0, mix = 0, delay = 0, w = 0;
  std::array<std::vector<std::int64_t>, 2> lines{};

  GrainModel() { recompute(); }
  void edit(unsigned index, std::int64_t knob) override {
    if (index > 1) return;
    knobs[index] = knob;
    recompute();
  }
  void setTempo(int tenths) override {
    constexpr std::array<std::int64_t, 10> kFractions{0, 13, 26, 38, 51, 64, 77, 90, 102, 115};
    tempo = tenths / 10 * 128 + kFractions[static_cast<std::size_t>(tenths % 10)];
    recompute();
  }
  void recompute() {
    constexpr std::array<std::array<std::int64_t, 3>, 17> kRows{{{0, 192, 384},
                                                                 {10, 72, 384},
                                                                 {20, 96, 192},
                                                                 {30, 96, 144},
                                                                 {40, 48, 96},
                                                                 {50, 48, 72},
                                                                 {60, 24, 48},
                                                                 {70, 24, 36},
                                                                 {80, 36, 30},
                                                                 {90, 24, 24},
                                                                 {100, 12, 24},
                                                                 {105, 12, 16},
                                                                 {110, 12, 12},
                                                                 {120, 12, 8},
                                                                 {122, 12, 6},
                                                                 {124, 12, 4},
                                                                 {126, 12, 3}}};
    std::int64_t t1 = 0, t2 = 0;
    for (const auto& [from, cycle, grain] : kRows) {
      if (knobs[0] >= from) t1 = cycle, t2 = grain;
    }
    pending.step = tempo * 412316860416 / (t1 * 1354752000);
    pending.delay = tempo == 0 ? 131072 : std::min<std::int64_t>(131072, t2 * 1354752000 / (tempo * 1536));
    pending.mix = linear(knobs[1]);
    start = static_cast<std::uint32_t>(-(t2 * 412316860416 / (t1 * 1536)));
    dirty = true;
  }
  void reset() override {
    for (auto& line : lines) line.assign(131072, 0);
    realign = true;
    phase = record = 0;
    mix = live.mix << 15;
    delay = live.delay << 15;
  }
  void grid() override {
    if (dirty) live = pending;
    dirty = false;
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    const std::int64_t k1 = immediate ? 32767 : 327, k2 = immediate ? 32767 : 102;
    phase = realign ? start : static_cast<std::uint32_t>(phase + live.step);
    realign = false;
    record += ((phase >> 31 != 0 ? 32767 : 0) - (record >> 15)) * k1;
    output += ((wrap(phase - start) < 0 ? 32767 : 0) - (output >> 15)) * k1;
    mix += (live.mix - (mix >> 15)) * k2;
    delay += (live.delay - (delay >> 15)) * k1;
    const std::int64_t x = (l + r) >> 1, a = record >> 15, b = output >> 15, m = mix >> 15, f = delay & 32767;
    const auto near = static_cast<std::size_t>((w - (delay >> 15)) & 131071), far = (near - 1) & 131071;
    const auto tap = [&](const auto& line) { return ((line[far] - line[near]) * f >> 15) + line[near]; };
    const std::int64_t intoA = sat((tap(lines[0]) * (32767 - a) >> 15) + (a * x >> 15));
    const std::int64_t intoB = sat((tap(lines[1]) * a >> 15) + ((32767 - a) * x >> 15));
    lines[0][static_cast<std::size_t>(w)] = intoA;
    lines[1][static_cast<std::size_t>(w)] = intoB;
    const std::int64_t wet = sat((intoA * (32767 - b) >> 15) + (intoB * b >> 15)) * m >> 15;
    l = sat(((32767 - m) * l >> 15) + wet);
    r = sat(((32767 - m) * r >> 15) + wet);
    w = (w + 1) & 131071;
  }
};

/// An effect with its own delay memory. If `code` is not 0, `reset` sends this notification instead.
template <typename Effect, int code = 0>
struct Played {
  Played() {
    if constexpr (requires { memory.add(&effect); }) memory.add(&effect);
    effect.reset();
  }
  SivrayFxMemoryManager memory;
  Effect effect;
  void setParameter(unsigned index, int value) { effect.setParameter(index, value); }
  void setTempo(int tenths) { effect.setTempo(tenths); }
  void setImmediate(bool on) { effect.setImmediate(on); }
  void reset() { code == 0 ? effect.reset() : effect.notify(code); }
  void process(StereoBlock& block, unsigned count) { effect.process(block, count); }
};

TEST(Rhythmic, GrainShifterMatchesItsPlainModelThroughRandomScenes) {
  playScenes<Played<SivrayFxGrainShifter>>(GrainModel{}, 400);
  playScenes<Played<SivrayFxGrainShifter, kRestart>>(GrainModel{}, 100);
}

TEST(Rhythmic, EveryKindOfLanesSoundsAsThePlainOne) {
  for (const unsigned seed : {1U, 2U}) {
    expectKindsToAgree<SivrayFxGrainShifter>(seed, 400);
    expectKindsToAgree<EffectAdapter<Slicer>>(seed, 400);
  }
}

TEST(Rhythmic, LanesLeaveGrainsThatAreTooShortOrTooLongToThePlainKind) {
  Dice dice(5);
  for (const auto& [speed, tempo] : {std::pair{127, 100000}, {127, 13000}, {127, 2000}, {0, 10}, {0, 0}}) {
    InKind<SivrayFxGrainShifter> plain(VectorSet::none);
    InKind<SivrayFxGrainShifter> fast(VectorSet::avx2);
    Stereo in(140000);
    std::generate(in.left.begin(), in.left.end(), [&] { return static_cast<std::int16_t>(dice.upTo(20000)); });
    Stereo expected;
    Stereo sound;
    for (const auto& [effect, out] : {std::pair{&plain, &expected}, {&fast, &sound}}) {
      effect->reset();
      effect->setParameter(kEdit2, 127);
      effect->render(in, *out);  // Both lines contain sound now.
      effect->setParameter(kEdit1, speed);
      effect->setTempo(tempo);
      effect->render(in, *out);
    }
    EXPECT_EQ(sound, expected) << "speed " << speed << " tempo " << tempo;
  }
}

/// A slicer without hold, whose saw waves are both at their maximum after 500 samples.
struct OpenGate : InKind<EffectAdapter<Slicer>> {
  explicit OpenGate(VectorSet set) : InKind(set) {
    setParameter(kEdit2, 0);
    Stereo settle = constantSound(20000, 0);
    settle.left[0] = 1;
    render(settle, settle);
    law.phase = tesh::cofu::core::wrapMul(law.now.lfoStep, -500);
  }
};

TEST(Rhythmic, LanesLeaveAGateWithoutAHoldToThePlainKind) {
  const Stereo in = constantSound(2000, 20000);
  Stereo expected;
  Stereo sound;
  OpenGate(VectorSet::none).render(in, expected);
  OpenGate(VectorSet::avx2).render(in, sound);
  EXPECT_EQ(sound, expected);
}

TEST(Rhythmic, SlicerLevelsHoldTheirEndsAndTheirOrder) {
  EXPECT_EQ(slicerLevelTable.front(), 32767);
  EXPECT_EQ(slicerLevelTable.back(), 131068);
  EXPECT_TRUE(std::is_sorted(slicerLevelTable.begin(), slicerLevelTable.end()));
}

/// Returns one bar of a constant input at 120 BPM, after the make-up gain has settled.
Stereo slicedConstant(int hold) {
  EffectAdapter<Slicer> slicer;
  slicer.setParameter(kEdit1, 50);
  slicer.setParameter(kEdit2, hold);
  Stereo settle = constantSound(22050, 10000);
  process(slicer, settle);
  slicer.notify(kRhythmicRestart);
  Stereo sound = constantSound(88200, 10000);
  process(slicer, sound);
  return sound;
}

TEST(Rhythmic, SlicerOpensForItsShareOfTheBeat) {
  const auto open = [](const Stereo& s) {
    return static_cast<double>(std::count_if(s.left.begin(), s.left.end(), [](int x) { return x > 5000; })) / 88200;
  };
  EXPECT_NEAR(open(slicedConstant(0)), 1.0, 0.01);
  EXPECT_NEAR(open(slicedConstant(64)), 0.496, 0.01);
  const Stereo half = slicedConstant(64);
  for (std::size_t beat = 0; beat < 4; ++beat) {
    EXPECT_GT(half.left[beat * 22050 + 5000], 9000);
    EXPECT_EQ(half.left[beat * 22050 + 20000], 0);
  }
}

TEST(Rhythmic, AnyTempoIsSafe) {
  Played<SivrayFxGrainShifter> grain;
  EffectAdapter<Slicer> slicer;
  Stereo sound = constantSound(5000, 1000);
  for (SivrayFx* effect : std::initializer_list<SivrayFx*>{&grain.effect, &slicer}) {
    for (const int tenths : {0, 1, 3000, -1, -2147483647 - 1, 2147483647}) {
      effect->setTempo(tenths);
      process(*effect, sound);
    }
  }
}

}  // namespace
