// The checks' measuring tools: call counters, guarded buffers, and the analysis of a sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <limits>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

#include "check/CallCounter.h"
#include "check/Check.h"
#include "check/GuardedBuffer.h"
#include "check/InstructionCounter.h"
#include "check/Process.h"
#include "check/Sound.h"

namespace sivray::check {
namespace {

TEST(InstructionCounter, CountsEachInstructionOnceAndForItsOwner) {
  ASSERT_NE(InstructionCounter::works(), isSanitized());
  if (isSanitized()) {
    return;
  }
  constexpr std::int64_t kLoop = 3000;  // A thousand rounds of three instructions.
  constexpr std::int64_t kAround = 100;
  InstructionCounts counts;
  {
    const InstructionCounter counter(counts, {});
    asm volatile("mov $1000, %%ecx; 1: add $1, %%eax; dec %%ecx; jnz 1b" ::: "eax", "ecx", "cc");
  }
  EXPECT_NEAR(static_cast<double>(counts.program - kLoop), 0.0, kAround);
  EXPECT_EQ(counts.library, 0);

  const ModuleRange libraryC = ModuleRange::of("/libc.so");
  {
    const InstructionCounter counter(counts, libraryC);
    void* volatile block = std::malloc(100);
    std::free(block);
  }
  EXPECT_GT(counts.library, 10);
}

TEST(GrowthWatch, SeesAFewKilobytesOfEachCycleButNoneThatAreReturned) {
  if (isSanitized()) {
    return;  // A sanitizer's allocator does not report sizes.
  }
  constexpr std::size_t kLeak = 4096;
  constexpr int kCycles = 3 * GrowthWatch::kWarmCycles;
  GrowthWatch returned;
  for (int cycle = 0; cycle < kCycles; ++cycle) {
    const std::vector<char> block(static_cast<std::size_t>(1 + cycle % 7) << 20U);
    returned.look();
  }
  EXPECT_LE(returned.pagesKiB(), 0);
  GrowthWatch kept;
  std::vector<std::vector<char>> blocks(kCycles);
  for (std::vector<char>& block : blocks) {
    block.resize(kLeak);
    kept.look();
  }
  EXPECT_GE(kept.heapKiB(), 2 * GrowthWatch::kWarmCycles * static_cast<int>(kLeak) / 1024);
  EXPECT_EQ(kept.threads(), 0);
}

TEST(GrowthWatch, CountsAThreadThatStaysAndNoneThatIsLateOrAboutToEnd) {
  const auto linger = [](const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  };
  GrowthWatch growth;
  const auto lookOften = [&growth](int cycles) {
    for (int cycle = 0; cycle < cycles; ++cycle) {
      growth.look();
    }
  };
  growth.look();
  const std::jthread late(linger);
  lookOften(2 * GrowthWatch::kWarmCycles);
  EXPECT_EQ(growth.threads(), 0);
  const std::jthread staying(linger);
  growth.look();
  EXPECT_EQ(growth.threads(), 0);
  lookOften(GrowthWatch::kWarmCycles - 1);
  EXPECT_EQ(growth.threads(), 1);
}

TEST(CallCounter, SeesWhatItsThreadCallsWhileItLives) {
  ASSERT_NE(CallCounter::works(), isSanitized());
  if (isSanitized()) {
    return;
  }
  CallCounts counts;
  std::mutex mutex;
  std::mutex held;
  {
    const CallCounter counter(counts);
    void* volatile block = std::malloc(100);
    block = std::realloc(block, 200);
    std::free(block);
    std::free(nullptr);
    if (std::FILE* const file = std::fopen("/dev/null", "w")) {
      EXPECT_EQ(::write(::fileno(file), "x", 1), 1);
      std::fclose(file);
    }
    mutex.lock();
    mutex.unlock();
  }
  EXPECT_GE(counts.allocations, 2);
  EXPECT_GE(counts.frees, 1);
  EXPECT_GE(counts.files, 1);
  EXPECT_EQ(counts.writes, 1);
  EXPECT_GE(counts.locks, 1);
  EXPECT_EQ(counts.waits, 0);

  const CallCounts before = counts;
  std::free(std::malloc(10));
  EXPECT_EQ(counts.allocations, before.allocations);

  std::promise<void> begins;
  held.lock();
  std::thread waiter([&] {
    begins.set_value();
    const CallCounter counter(counts);
    held.lock();
    held.unlock();
  });
  begins.get_future().wait();
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  held.unlock();
  waiter.join();
  EXPECT_EQ(counts.waits, 1);
}

TEST(GuardedBuffer, EndsTheProgramAtBothEnds) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  for (const std::size_t samples : {std::size_t{1500}, std::size_t{1024}, std::size_t{1}}) {
    if (isSanitized() && samples != 1500) {
      break;  // The test program is started again for each case.
    }
    GuardedBuffer front(samples, GuardedEnd::front);
    GuardedBuffer back(samples, GuardedEnd::back);
    front.data()[samples - 1] = 1.0F;
    back.data()[0] = 1.0F;
    volatile float* const before = front.data() - 1;
    volatile float* const behind = back.data() + samples;
    EXPECT_DEATH(*before = 1.0F, "");
    EXPECT_DEATH(*behind = 1.0F, "");
  }
}

TEST(SoundFacts, TellFaultySamplesFromGoodOnes) {
  SoundFacts good;
  const float fine[] = {0.0F, -1.0F, 1.0F, 0.5F};
  good.add(fine, 4);
  EXPECT_TRUE(good.isSane() && good.isHeard());
  for (const float bad : {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity(), 1.001F,
                          std::numeric_limits<float>::denorm_min()}) {
    SoundFacts facts;
    facts.add(&bad, 1);
    EXPECT_FALSE(facts.isSane()) << bad;
  }
}

}  // namespace
}  // namespace sivray::check
