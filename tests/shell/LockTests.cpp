// Two threads in the modules of the shell that have their own locks, and in lists whose order depends on a lock. The
// thread sanitizer reports each missing lock.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <thread>

#include "ShellScene.h"
#include "host/shell/ParameterCache.h"
#include "support/QuietSides.h"

namespace shell {
namespace {

constexpr int kRounds = 2000;

template <typename First, typename Second>
void runBoth(First first, Second second) {
  const auto repeat = [](auto& action) {
    for (int round = 0; round < kRounds; ++round) {
      action(round);
    }
  };
  std::thread other([&] { repeat(first); });
  repeat(second);
  other.join();
}

TEST_F(Shell, LetsThreadsReadTheCacheWhileABlockWritesIt) {
  bramel::vst::ParameterCache cache;
  cache.fill(controller());
  cache.setTooltipProvider(std::make_unique<PlainTexts>());
  bramel::vst::ChangeList changes;
  changes.resize(4);
  runBoth(
      [&](int round) {
        const float value = static_cast<float>(round % 2);
        cache.noteValue(0, value);
        changes.put({{}, vimo::ProcessorEventTag::floatValue, 0, value, 0});
        cache.store(changes);
        changes.clear();
        cache.refreshTexts(controller());
        if (round % 100 == 0) {
          cache.refresh(controller());
          cache.setTooltipProvider(std::make_unique<PlainTexts>());
        }
      },
      [&](int) {
        const Log texts{"0.000000", "0.250000", "1.000000"};
        EXPECT_NE(std::find(texts.begin(), texts.end(), cache.display(0)), texts.end());
        EXPECT_EQ(cache.fact(0, &bramel::vst::ParameterInfo::name), "macro0");
        EXPECT_LE(cache.value(0), 1.0F);
        EXPECT_EQ(cache.count(), 4U);
      });
}

TEST_F(Shell, TellsTheEngineEachTempoOnceThoughTwoThreadsBringThem) {
  const auto bring = [this](int round) { shell->setTempo(60.0F + static_cast<float>(round % 7)); };
  runBoth(bring, bring);
  EXPECT_EQ(std::adjacent_find(generator->tempi.begin(), generator->tempi.end()), generator->tempi.end());
}

TEST_F(Shell, TakesTheNotesOfTwoThreadsInTheOrderOfEachWhileBlocksRun) {
  const auto note = [](std::uint8_t key, int round) {
    return Bytes{0x90, key, static_cast<std::uint8_t>(1 + round % 100)};
  };
  runBoth([&](int round) { send(note(1, round)); },
          [&](int round) {
            send(note(2, round));
            run(1);
          });
  run(1);
  EXPECT_EQ(generator->midi.size(), 2U * kRounds);
  for (const std::uint8_t key : Bytes{1, 2}) {
    int round = 0;
    for (const std::string& message : generator->midi) {
      if (const Bytes next = note(key, round); message == hex(next.data(), next.size()) + "@0") {
        ++round;
      }
    }
    EXPECT_EQ(round, kRounds);
  }
}

TEST_F(Shell, TakesANoteWhileAnotherThreadHoldsTheMainLock) {
  struct Waiting final : support::QuietHost {
    void sendMidi(const std::uint8_t*, std::size_t, std::int32_t) override {
      sent = std::async(std::launch::async, play);
      isSent = sent.wait_for(std::chrono::seconds(30)) == std::future_status::ready;
    }
    std::function<void()> play;
    std::future<void> sent;
    bool isSent = false;
  };
  const auto waiting = std::make_shared<Waiting>();
  waiting->play = [this] { send({0x90, 37, 1}); };
  shell->setHostCallback(waiting);
  generator->toHost.emplace_back(Bytes{0x90, 36, 1}, 0U);
  run();  // Calls the host while holding the lock.
  EXPECT_TRUE(waiting->isSent);
  generator->toHost.clear();
  run();
  EXPECT_EQ(generator->midi, Log{"902501@0"});
}

TEST_F(Shell, KeepsPropertiesThatTwoThreadsSetOrOneReads) {
  // Each thread does one of the two, because the lock of one would hide a missing lock of the other from the sanitizer.
  const auto nameOf = [](std::string letter, int round) { return letter.append(std::to_string(round % 100)); };
  const auto setOf = [&](const char* letter) {
    return [&, letter](int round) { shell->setProperty(nameOf(letter, round), cofu::core::boxed::makeBox(round)); };
  };
  runBoth(setOf("a"), setOf("b"));
  runBoth(setOf("a"), [&](int round) { EXPECT_NE(shell->property(nameOf("a", round)), nullptr); });
  const auto last = shell->property("a99");
  ASSERT_NE(cofu::core::boxed::valueIn<int>(last), nullptr);
  EXPECT_EQ(*cofu::core::boxed::valueIn<int>(last), kRounds - 1);
}

}  // namespace
}  // namespace shell
