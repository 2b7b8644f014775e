// Tables and helpers that the effects share: knobs, note values, glides, hand-over of settings, adapters, delay memory.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <limits>
#include <utility>

#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/EffectScene.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/OneSample.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/PlainMemory.h"
#include "effects/interfaces/SivrayFxMemoryManager.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

TEST(KnobTables, FollowTheirCurvesToTheEnds) {
  for (std::size_t i = 0; i < 128; ++i) {
    const double x = static_cast<double>(i) / 127.0;
    EXPECT_LT(std::abs(linearTable[i] - 32767 * x), 1.1);
    const double square = 32767 * x * x - squareTable[i];
    const double convex = 32767 * (1 - (1 - x) * (1 - x)) - convexTable[i];
    EXPECT_TRUE(square > -1e-9 && square < 1) << i;
    EXPECT_TRUE(convex > -1e-9 && convex < 1) << i;
  }
  for (const KnobTable* table : {&linearTable, &squareTable, &convexTable}) {
    EXPECT_TRUE(std::is_sorted(table->begin(), table->end()));
    EXPECT_EQ(table->front(), 0);
    EXPECT_EQ(table->back(), 32767);
  }
}

TEST(TempoTables, KnobsReachEveryNoteInTheirOwnDirection) {
  for (std::size_t note = 0; note < kNoteCount; ++note) {
    const auto of = [note](auto law) {
      int uses = 0;
      for (int knob = 0; knob < 128; ++knob) {
        uses += law(knob) == note ? 1 : 0;
      }
      return uses;
    };
    EXPECT_EQ(of(delayNoteIndex), note == 8 ? 11 : 9);
    EXPECT_EQ(of(lfoNoteIndex), note == 8 ? 11 : 9);
  }
  for (int knob = 1; knob < 128; ++knob) {
    EXPECT_GE(delayNoteIndex(knob), delayNoteIndex(knob - 1));
    EXPECT_LE(lfoNoteIndex(knob), lfoNoteIndex(knob - 1));
  }
  EXPECT_EQ(delayNoteIndex(82), 8U);
  EXPECT_EQ(lfoNoteIndex(55), 8U);
}

TEST(TempoTables, AStepGoesRoundOnceInTheNotesLength) {
  EXPECT_EQ(tempoStep({50, 0, 1200}), 194783);  // 2^32 / 22050 samples, in single precision
  EXPECT_EQ(tempoStep({0, 0, 0}), 0);
  EXPECT_EQ(tempoStep({0, 0, -30}), 0);
  EXPECT_EQ(tempoStep({127, 0, std::numeric_limits<int>::max()}), std::numeric_limits<std::int32_t>::max());
}

TEST(SmoothedValue, ReachesEveryTargetAndRests) {
  for (const std::int32_t k : {kGlide, kGlideImmediate}) {
    for (const std::int32_t target : {0, 1, 100, 32767}) {
      for (const std::int32_t start : {0, 32767, 5000}) {
        SmoothedValue value;
        value.setNow(start);
        int steps = 0;
        for (; !value.restsAt(target); ++steps) {
          value.glide(target, k);
        }
        EXPECT_LE(steps, k == kGlide ? 4000 : 2) << start << " to " << target;
      }
    }
  }
}

TEST(ShortLeak, IsTheLeakWhereItsProductDoesNotWrap) {
  for (std::int32_t v = -65536; v <= 65536; ++v) {
    ASSERT_EQ(shortLeak(v), cofu::core::leak(v));
  }
}

TEST(PendingSettings, HandsOverOnceAndTheLatest) {
  PendingSettings<int> pending(7);
  int live = 0;
  EXPECT_FALSE(pending.takeInto(live));
  pending.post(8);
  pending.post(9);
  EXPECT_TRUE(pending.takeInto(live));
  EXPECT_EQ(live, 9);
  EXPECT_FALSE(pending.takeInto(live));
  EXPECT_EQ(pending.peek(), 9);
}

/// Outputs Edit1 on the left and its smoothed value on the right, and calls `inTheMiddle` at the tenth sample of a
/// block.
struct ProbeLaw {
  static constexpr LawParts kParts{.glides = true};
  struct Settings {
    std::int32_t level = -1;
  };
  static Settings settingsOf(const Knobs& knobs) { return {knobs.edit1 + knobs.tempoTenths}; }
  void reset(const Settings&) { ++resets; }
  void eachSmoothed(const Settings& to, auto&& visit) { visit(level, to.level); }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) {
    if (++samples % 1000 == 10 && inTheMiddle) {
      inTheMiddle();
    }
    left = static_cast<std::int16_t>(to.level);
    right = static_cast<std::int16_t>(level.value());
  }
  SmoothedValue level;
  int samples = 0;
  static inline int resets = 0;
  static inline std::function<void()> inTheMiddle;
};

struct RhythmicLaw : ProbeLaw {
  static constexpr LawParts kParts{.start = Knobs{50, 0, 7},
                                   .followsTempo = true,
                                   .resetTakesPending = true,
                                   .otherRestart = kRhythmicRestart,
                                   .glides = true};
};

/// Returns the next 200 samples.
template <typename Effect>
std::array<std::array<std::int16_t, 200>, 2> played(Effect& effect) {
  std::array<std::array<std::int16_t, 200>, 2> sound{};
  StereoBlock block{sound[0].data(), sound[1].data()};
  effect.process(block, 200);
  return sound;
}

TEST(TwoKnobEffect, AnswersParametersAndTransportForItsLaw) {
  TwoKnobEffect<ProbeLaw> direct;
  EffectAdapter<RhythmicLaw> adapted;
  EXPECT_EQ(direct.setParameter(1, 55), 0);
  EXPECT_EQ(adapted.setParameter(1, 55), 55);
  EXPECT_EQ(adapted.setParameter(kEdit1, -1), 127);
  EXPECT_EQ(adapted.setParameter(kEdit2, 128 + 5), 5);
  EXPECT_EQ(adapted.setParameter(4, 55), 0);
  StereoBlock nothing;
  direct.process(nothing, 0);
  for (const auto& [effect, expected] : {std::pair<SivrayFx*, int>{&direct, 1}, {&adapted, 2}}) {
    ProbeLaw::resets = 0;
    for (const int code : {2, 5, 6}) {
      effect->notify(code);
    }
    EXPECT_EQ(ProbeLaw::resets, expected);
  }
}

TEST(TwoKnobEffect, ASettingLandsOnTheGridAndGlidesThere) {
  TwoKnobEffect<ProbeLaw> effect;
  EXPECT_EQ(played(effect)[0][199], -1) << "no knob set yet";
  effect.setParameter(kEdit1, 10);
  const auto glided = played(effect);
  EXPECT_EQ(glided[0][0], 1210);
  EXPECT_LT(glided[1][199], 1200);
  effect.setImmediate(true);
  EXPECT_GE(played(effect)[1][1], 1209);
}

TEST(TwoKnobEffect, AChangeWithinABlockWaitsForTheNextMultipleOf64) {
  TwoKnobEffect<RhythmicLaw> effect;
  ProbeLaw::inTheMiddle = [&] { effect.setTempo(100); };
  const auto sound = played(effect);
  ProbeLaw::inTheMiddle = nullptr;
  EXPECT_EQ(sound[0][63], 57);
  EXPECT_EQ(sound[0][64], 150);
}

TEST(TwoKnobEffect, AResetStartsFromTheNewestSettingsWhereTheLawSaysSo) {
  TwoKnobEffect<ProbeLaw> later;
  TwoKnobEffect<RhythmicLaw> newest;
  for (SivrayFx* effect : std::initializer_list<SivrayFx*>{&later, &newest}) {
    effect->setParameter(kEdit1, 90);
    effect->reset();
  }
  EXPECT_LT(played(later)[1][0], 100);
  EXPECT_EQ(played(newest)[1][0], 97);
}

/// Calls `inTheMiddle` once while it computes settings, in place of another thread.
struct InterruptedLaw : ProbeLaw {
  static Settings settingsOf(const Knobs& knobs) {
    if (const auto act = std::exchange(inTheMiddle, nullptr)) {
      act();
    }
    return {100 * knobs.edit1 + knobs.edit2};
  }
};

TEST(TwoKnobEffect, TwoKnobsThatAreTurnedAtOnceBothLand) {
  TwoKnobEffect<InterruptedLaw> effect;
  ProbeLaw::inTheMiddle = [&] { effect.setParameter(kEdit2, 7); };
  effect.setParameter(kEdit1, 3);
  EXPECT_EQ(played(effect)[0][0], 307);
}

struct User : SivrayFxMemoryUser {
  explicit User(std::size_t samples, std::size_t lines = 1) : SivrayFxMemoryUser(samples / lines), size(samples) {}
  std::size_t requiredSamples() const override { return size; }
  std::size_t size;
};

TEST(SivrayFxMemoryManager, GivesTwoDisjointBanksInTurn) {
  SivrayFxMemoryManager memory;
  User small(100);
  User large(5000);
  User middle(200);
  for (User* user : {&small, &large, &middle}) {
    memory.add(user);
    EXPECT_EQ(user->assigner, &memory);
  }
  std::int16_t* const first = memory.acquire(small);
  std::int16_t* const second = memory.acquire(large);
  EXPECT_EQ(first - second, 5000) << "the first request takes the upper bank";
  EXPECT_EQ(memory.acquire(middle), first);
  EXPECT_TRUE(std::all_of(second, second + 10000, [](int x) { return x == 0; }));
}

TEST(SivrayFxMemoryManager, HoldsWhatAPlainPoolHoldsWhoeverHasWritten) {
  SivrayFxMemoryManager memory;
  scene::PlainMemory plain;
  // Some sizes end in the middle of a page.
  std::array<User, 4> users{User(100), User(7000, 2), User(200, 4), User(8192, 2)};
  std::array<User, 4> plainUsers = users;
  std::array<std::array<std::int16_t*, 2>, 4> areas{};
  for (std::size_t i = 0; i < users.size(); ++i) {
    memory.add(&users[i]);
    plain.add(&plainUsers[i]);
  }
  std::array<std::size_t, 2> lastIn{9, 9};
  scene::Dice chance(7);
  for (int round = 0; round < 3000; ++round) {
    const auto who = static_cast<std::size_t>(chance.upTo(3));
    if (chance.upTo(2) == 0) {
      areas[who] = {memory.acquire(users[who]), plain.acquire(plainUsers[who])};
    } else if (areas[who][0] == nullptr) {
      continue;
    } else {  // The area may belong to another user by now.
      const std::size_t length = users[who].lineLength;
      const auto from = static_cast<std::size_t>(chance.upTo(static_cast<int>(length) - 1));
      const auto count = static_cast<std::size_t>(chance.upTo(chance.upTo(9) == 0 ? 9000 : 600));
      EXPECT_EQ(memory.noteWrites(users[who], from, count), lastIn[users[who].bank] == who) << round;
      for (std::size_t i = 0; i < users[who].size; ++i) {
        const bool isWritten = (i % length + length - from) % length < count;
        for (std::int16_t* const area : areas[who]) area[i] = isWritten ? std::int16_t{1} : area[i];
      }
    }
    lastIn[users[who].bank] = who;
    const auto [area, expected] = areas[who];
    ASSERT_TRUE(std::equal(area, area + 8192, expected)) << round;
  }
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
