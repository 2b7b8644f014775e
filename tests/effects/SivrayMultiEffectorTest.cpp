// The master effect compared with one that skips nothing; its fades; and concurrent setters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/SivrayMultiEffector.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

#include "effects/interfaces/EffectScene.h"
#include "platform/CpuFeatures.h"
#include "support/Sanitized.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

using scene::Dice;
using scene::Stereo;

/// Returns a master effect that runs sample by sample and is never asked to skip.
std::unique_ptr<SivrayMultiEffector> makePlain() {
  const platform::VectorLimit sampleBySample(platform::VectorSet::none);
  return std::make_unique<SivrayMultiEffector>();
}

void render(SivrayMultiEffector& master, Stereo& s, int from, int count) {
  StereoBlock block{s.left.data() + from, s.right.data() + from};
  master.process(block, count);
}

/// Lets the effect skip a silent block. Returns whether it did.
bool renderOrSkip(SivrayMultiEffector& fast, Stereo& s, int count) {
  const bool skips = s == Stereo(s.left.size()) && fast.skip(count);
  if (!skips) {
    render(fast, s, 0, count);
  }
  return skips;
}

/// Runs both on zero frames; the fast one is first asked whether it can skip them.
void runEmpty(SivrayMultiEffector& fast, SivrayMultiEffector& plain) {
  Stereo none(1);
  if (!fast.skip(0)) {
    render(fast, none, 0, 0);
  }
  render(plain, none, 0, 0);
}

/// Applies one random change to both, with the same random numbers.
template <typename Act>
void onBoth(SivrayMultiEffector& fast, SivrayMultiEffector& plain, Act&& act) {
  act(fast);
  act(plain);
}

void actAtRandom(Dice& dice, SivrayMultiEffector& fast, SivrayMultiEffector& plain) {
  const int value = dice.upTo(127);
  switch (dice.upTo(11)) {
    case 0:
      return onBoth(fast, plain, [type = dice.upTo(31) - 1](auto& m) { m.setValue(kEffectType, type); });
    case 1:
      return onBoth(fast, plain, [on = dice.upTo(2)](auto& m) { m.setValue(kEffectSwitch, on); });
    case 2:
    case 3:
      return onBoth(fast, plain, [value](auto& m) { m.setValue(kEdit1, value); });
    case 4:
    case 5:
      return onBoth(fast, plain, [value](auto& m) { m.setValue(kEdit2, value); });
    case 6:
      return onBoth(fast, plain, [tempo = dice.upTo(3000)](auto& m) { m.setTempo(tempo); });
    case 7:
      return onBoth(fast, plain, [data = dice.upTo(4)](auto& m) { m.transport(data); });
    case 8:
      if (dice.oneIn(4)) {
        onBoth(fast, plain, [](auto& m) { m.reset(); });
      }
      return;
    default:
      return;
  }
}

TEST(MultiEffector, SoundsAsThePlainOneThroughAnyEdits) {
  int skipped = 0;
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Dice dice(seed);
    SivrayMultiEffector fast;
    const auto owned = makePlain();
    SivrayMultiEffector& plain = *owned;
    for (int b = 0; b < 400; ++b) {
      actAtRandom(dice, fast, plain);
      if (dice.oneIn(3)) {
        runEmpty(fast, plain);
      }
      actAtRandom(dice, fast, plain);
      const int count = dice.oneIn(30) ? dice.upTo(6000) : (dice.oneIn(5) ? dice.upTo(2) : dice.blockSize());
      Stereo a = dice.input(std::max(count, 1));
      Stereo c = a;
      skipped += renderOrSkip(fast, a, count) ? 1 : 0;
      render(plain, c, 0, count);
      ASSERT_EQ(a, c) << "seed " << seed << " block " << b;
    }
  }
  EXPECT_GT(skipped, 100);
}

TEST(MultiEffector, EveryTypeSoundsAsThePlainOneAfterAChangeInMidSound) {
  SivrayMultiEffector fast;
  const auto owned = makePlain();
  SivrayMultiEffector& plain = *owned;
  Dice dice(77);
  for (int i = 0; i < 3 * kEffectTypeCount; ++i) {
    onBoth(fast, plain, [type = (i * 7) % kEffectTypeCount](auto& m) { m.setValue(kEffectType, type); });
    // The first three blocks end in immediate mode, so the edit before the fourth one must glide.
    for (const int count : {1, 20, 23, 1, 64, 700, 2048}) {
      onBoth(fast, plain, [edit = dice.upTo(127)](auto& m) {
        m.setValue(kEdit1, edit);
        m.setValue(kEdit2, 127 - edit);
      });
      Stereo a = dice.input(count);
      Stereo c = a;
      render(fast, a, 0, count);
      render(plain, c, 0, count);
      ASSERT_EQ(a, c) << effectTypeName((i * 7) % kEffectTypeCount);
    }
  }
}

TEST(MultiEffector, ARunOfNoFramesTakesNoEdits) {
  for (int type = 0; type < kEffectTypeCount; ++type) {
    SivrayMultiEffector fast;
    const auto owned = makePlain();
    SivrayMultiEffector& plain = *owned;
    onBoth(fast, plain, [type](auto& m) { m.setValue(kEffectType, type); });
    Dice dice(static_cast<unsigned>(type));
    for (int round = 0; round < support::scenes(4); ++round) {
      // Silence until the longest delay line is empty, so that the effect skips.
      for (int done = 0; done < 160000; done += 4000) {
        Stereo a(4000);
        Stereo c(4000);
        renderOrSkip(fast, a, 4000);
        render(plain, c, 0, 4000);
        ASSERT_EQ(a, c) << effectTypeName(type) << " round " << round;
      }
      for (const int index : {2, 3}) {
        onBoth(fast, plain, [index, edit = dice.upTo(127)](auto& m) { m.setValue(index, edit); });
        runEmpty(fast, plain);
      }
      onBoth(fast, plain, [round](auto& m) { m.transport(round % 2 == 0 ? 3 : 0); });
      Stereo a = dice.input(3000);
      a.left[0] = 20000;
      Stereo c = a;
      render(fast, a, 0, 3000);
      render(plain, c, 0, 3000);
      ASSERT_EQ(a, c) << effectTypeName(type) << " round " << round;
    }
  }
}

TEST(MultiEffector, EffectsThatMeetInOneBankAfterAResetSoundAsThePlainOnes) {
  constexpr std::array<int, 5> kUsers{11, 12, 13, 14, 16};
  for (unsigned seed = 1; seed <= support::scenes(40U); ++seed) {
    Dice dice(seed);
    SivrayMultiEffector fast;
    const auto owned = makePlain();
    SivrayMultiEffector& plain = *owned;
    const auto play = [&](int blocks, int longest, bool isSilent) {
      for (int b = 0; b < blocks; ++b) {
        const int count = 1 + dice.upTo(longest - 1);
        Stereo a = isSilent ? Stereo(static_cast<std::size_t>(count)) : dice.input(count);
        Stereo c = a;
        renderOrSkip(fast, a, count);
        render(plain, c, 0, count);
        ASSERT_EQ(a, c) << "seed " << seed;
      }
    };
    for (int change = 0; change < 12; ++change) {
      if (dice.oneIn(2)) {
        onBoth(fast, plain, [](auto& m) { m.reset(); });
        play(dice.upTo(12), 2048, dice.oneIn(4));
      }
      const auto next = static_cast<std::size_t>(dice.upTo(4));
      onBoth(fast, plain, [&](auto& m) { m.setValue(kEffectType, kUsers[next]); });
      play(dice.upTo(40), 3, dice.oneIn(2));
      play(dice.upTo(4), 2048, dice.oneIn(2));
      onBoth(fast, plain, [edit = dice.upTo(127)](auto& m) { m.setValue(2 + edit % 2, edit); });
    }
  }
}

TEST(MultiEffector, EveryTypeButTheBypassChangesTheSound) {
  for (int type = 1; type < kEffectTypeCount; ++type) {
    SivrayMultiEffector master;
    SivrayMultiEffector bypassed;
    for (auto* const m : {&master, &bypassed}) {
      m->setValue(kEffectType, m == &master ? type : 0);
      m->setValue(kEdit1, 100);
      m->setValue(kEdit2, 100);
      m->reset();
    }
    Stereo a(4096);
    for (std::size_t i = 0; i < 4096; ++i) {
      a.left[i] = static_cast<std::int16_t>(i * 997);
      a.right[i] = static_cast<std::int16_t>(i * 503);
    }
    Stereo b = a;
    render(master, a, 0, 4096);
    render(bypassed, b, 0, 4096);
    EXPECT_NE(a, b) << effectTypeName(type);
  }
}

TEST(MultiEffector, ACrossfadeLastsFortyFiveFrames) {
  SivrayMultiEffector master;
  master.setValue(kEffectType, 0);
  master.reset();
  Stereo warm(4096);
  render(master, warm, 0, 4096);
  // From bypass to room reverb at level 0: both pass their input through, so only the rounding of the fade is visible.
  master.setValue(kEffectType, 14);
  Stereo s(60);
  std::fill(s.left.begin(), s.left.end(), std::int16_t{1000});
  for (int i = 0; i < 60; ++i) {
    render(master, s, i, 1);
  }
  EXPECT_NE(s.left[44], 999);
  EXPECT_EQ(s.left[45], 999) << "one step for the mix, none for the fade";
}

TEST(MultiEffector, ANewEffectTakesItsEditsAtOnceForFortyFourFrames) {
  for (const auto& [frames, isAtOnce] : {std::pair{43, true}, {44, false}}) {
    SivrayMultiEffector master;
    master.setValue(kEffectType, 0);
    master.setValue(kEdit1, 127);  // The echo comes after the test's end; the level attenuates the input.
    Stereo s(4096);
    render(master, s, 0, 4096);
    master.setValue(kEffectType, kTypeShortDelay);
    std::fill(s.left.begin(), s.left.end(), std::int16_t{10000});
    render(master, s, 0, frames);
    master.setValue(kEdit2, 127);
    render(master, s, frames, 100);
    EXPECT_EQ(s.left[static_cast<std::size_t>(frames) + 60] < 7000, isAtOnce) << frames;
  }
}

TEST(MultiEffector, SwitchedOffItGivesTheDrySoundWhileTheTailRunsOn) {
  SivrayMultiEffector master;
  master.setValue(kEffectType, 14);
  master.setValue(kEdit1, 127);
  master.setValue(kEdit2, 127);
  Stereo s(4096);
  render(master, s, 0, 4096);
  s = Stereo(4096);
  std::fill_n(s.left.begin(), 1000, std::int16_t{20000});
  render(master, s, 0, 4096);
  master.setValue(kEffectSwitch, 0);
  s = Stereo(4096);
  render(master, s, 0, 4096);
  EXPECT_TRUE(std::all_of(s.left.end() - 100, s.left.end(), [](int x) { return x == 0; }));
  master.setValue(kEffectSwitch, 1);
  s = Stereo(4096);
  render(master, s, 0, 4096);
  EXPECT_TRUE(std::any_of(s.left.begin(), s.left.end(), [](int x) { return std::abs(x) > 100; }));
}

TEST(MultiEffector, BadCountsAndIndicesChangeNothing) {
  SivrayMultiEffector master;
  Stereo s = Dice(1).input(4097);
  const Stereo before = s;
  render(master, s, 0, 4097);
  render(master, s, 0, 0);
  render(master, s, 0, -5);
  EXPECT_EQ(s, before);
  EXPECT_EQ(master.setValue(4, 9), 0);
  EXPECT_EQ(master.setValue(-1, 9), 0);
  EXPECT_EQ(master.value(4), 0);
  EXPECT_EQ(master.value(-1), 0);
}

TEST(MultiEffector, TakesTheLastValueOfWritersBesideTheAudioThread) {
  SivrayMultiEffector master;
  std::atomic<bool> done{false};
  const auto write = [&](unsigned seed) {
    Dice dice(seed);
    while (!done) {
      std::int32_t value = dice.upTo(127);
      const int index = dice.oneIn(20) ? 0 : 1 + dice.upTo(2);
      value = index == 0 ? dice.upTo(29) : value;
      master.parameter().setValue(index, &value);
      master.parameter().format(index, value);
      master.parameter().info(index);
      master.setTempo(dice.upTo(3000));
      std::this_thread::yield();
    }
  };
  std::thread first(write, 1);
  std::thread second(write, 2);
  Dice dice(3);
  for (int i = 0; i < 600; ++i) {
    Stereo s = dice.input(200);
    render(master, s, 0, 200);
    master.transport(dice.upTo(40));
    if (dice.oneIn(100)) {
      master.reset();
    }
  }
  done = true;
  first.join();
  second.join();
  master.setValue(kEffectSwitch, 0);
  Stereo silence(4096);
  render(master, silence, 0, 4096);
  EXPECT_TRUE(std::all_of(silence.left.end() - 100, silence.left.end(), [](int x) { return x == 0; }))
      << "the value set last switches the effect off";
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
