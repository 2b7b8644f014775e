// The shared tables and laws of the effects: knobs, notes, glides, hand-over, adapters, delay memory.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"
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
  EXPECT_EQ(tempoStep(50, 120.0F), 194783);  // 2^32 / 22050 samples, in single precision
  EXPECT_EQ(tempoStep(0, 0.0F), 0);
  EXPECT_EQ(tempoStep(0, -3.0F), 0);
  EXPECT_EQ(tempoStep(127, 1e9F), std::numeric_limits<std::int32_t>::max());
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

struct PlainCore {
  void process(StereoBlock&, unsigned) {}
  int setEdit(unsigned index, int value) { return static_cast<int>(index) * 1000 + value; }
  void reset() { ++resets; }
  static inline int resets = 0;
};

struct RhythmicCore : PlainCore {
  static constexpr bool kAnswersRhythmicRestart = true;
};

TEST(EffectAdapter, AnswersParametersAndTransportForItsCore) {
  EffectAdapter<PlainCore> plain;
  EffectAdapter<RhythmicCore> rhythmic;
  EXPECT_EQ(plain.setParameter(1, 55), 55);
  EXPECT_EQ(plain.setParameter(3, 55), 1055);
  PlainCore::resets = 0;
  for (const int code : {2, 5, 6}) {
    plain.notify(code);
  }
  EXPECT_EQ(PlainCore::resets, 1);
  for (const int code : {2, 5, 6}) {
    rhythmic.notify(code);
  }
  EXPECT_EQ(PlainCore::resets, 3);
}

struct User : SivrayFxMemoryUser {
  explicit User(std::size_t samples) : size(samples) {}
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
  std::int16_t* const first = memory.acquire();
  std::int16_t* const second = memory.acquire();
  EXPECT_EQ(first - second, 5000) << "the first request takes the upper bank";
  EXPECT_EQ(memory.acquire(), first);
  EXPECT_TRUE(std::all_of(second, second + 10000, [](int x) { return x == 0; }));
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
