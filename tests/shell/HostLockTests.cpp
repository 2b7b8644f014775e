// Deadlocks. The shell must not hold a lock while it calls the host, because a host may wait inside the call for
// another thread that reads a parameter or renders a block; some hosts lock their graph for both.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <latch>
#include <mutex>
#include <thread>

#include "host/shell/AudioThreads.h"
#include "shell/ShellScene.h"

namespace shell {
namespace {

/// Returns from each call when another thread has read a parameter or rendered a block, or after half a minute.
struct WaitingHost final : bramel::vst::BramelInstrumentHostCallback {
  explicit WaitingHost(BramelInstrument& shell) : instrument(shell) {}
  void beginEdit(std::uint64_t /*index*/) override { waitForAnotherThread(); }
  void endEdit(std::uint64_t /*index*/) override { waitForAnotherThread(); }
  void automate(std::uint64_t /*index*/, float /*value*/) override { waitForAnotherThread(); }
  void sendMidi(const std::uint8_t* /*data*/, std::size_t /*size*/, std::int32_t /*delta*/) override {
    waitForAnotherThread([this] {
      std::array<float, 8> samples{};
      std::array<float*, 2> outputs{samples.data(), samples.data()};
      instrument.process(nullptr, outputs.data(), 8);
    });
  }
  void parametersChanged() override { waitForAnotherThread(); }
  void programChanged(bramel::vst::Origin /*origin*/) override {}
  void keyStateChanged(int /*note*/) override {}

  void waitForAnotherThread() {
    waitForAnotherThread([this] { instrument.parameterValue(0); });
  }
  void waitForAnotherThread(const std::function<void()>& call) {
    std::packaged_task<void()> ask(call);
    auto answer = ask.get_future();
    readers.emplace_back(std::move(ask));
    answered += answer.wait_for(std::chrono::seconds(30)) == std::future_status::ready ? 1 : 0;
    ++calls;
  }

  BramelInstrument& instrument;
  std::vector<std::jthread> readers;
  int calls = 0;
  int answered = 0;
};

TEST_F(Shell, LetsBlocksRunWhileAStateIsPacked) {
  // Released when the state is packed, on the thread that packs it.
  bool isBlockServed = false;
  std::jthread audio;
  const auto runBlock = [&](const void* /*held*/) {
    std::packaged_task<void()> block([this] { run(); });
    auto done = block.get_future();
    audio = std::jthread(std::move(block));
    isBlockServed = done.wait_for(std::chrono::seconds(30)) == std::future_status::ready;
  };
  static constexpr std::uint8_t kByte = 0;
  generator->heldBySnapshot = [&] { return std::shared_ptr<const void>(&kByte, runBlock); };
  const Bytes state = shell->getState();
  EXPECT_TRUE(isBlockServed);
  generator->heldBySnapshot = nullptr;
  EXPECT_EQ(shell->getState(), state);
}

#ifndef NDEBUG
TEST_F(Shell, DiesWhereAWaveWouldBeReadUnderTheLockOfABlock) {
  generator->heldBySnapshot = [this] {
    shell->setParameter(0, 0.5F);
    return std::shared_ptr<const void>();
  };
  EXPECT_DEATH(shell->getState(), "isHeldHere");
}
#endif

TEST(AudioThreads, AreKnownHoweverManyShareOutTheBlocks) {
  constexpr int kThreads = 100;
  bramel::vst::AudioThreads known;
  bramel::vst::MainMutex mainMutex;
  const auto note = [&] {
    const bramel::vst::MainLock lock(mainMutex);
    known.note(lock);
  };
  std::latch haveRendered(kThreads);
  std::atomic<int> included = 0;
  {
    std::vector<std::jthread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([&] {
        note();
        haveRendered.arrive_and_wait();
        included += known.include() ? 1 : 0;
      });
    }
    haveRendered.wait();
    EXPECT_FALSE(known.include()) << "this thread has rendered nothing";
  }
  EXPECT_EQ(included, kThreads);
  note();
  EXPECT_TRUE(known.include());
  std::thread([&note] {
    for (std::uint32_t i = 0; i < bramel::vst::AudioThreads::kRemembered; ++i) {
      note();
    }
  }).join();
  EXPECT_FALSE(known.include()) << "its block is long past";
}

TEST_F(Shell, CallsTheHostWithoutALockThatAnotherThreadNeeds) {
  const auto waiting = std::make_shared<WaitingHost>(*shell);
  shell->setHostCallback(waiting);
  shell->setParameterFromEditor(0, 0.5F);
  shell->beginGesture(0);
  shell->setParameterFromEditor(0, 0.75F);
  shell->endGesture(0);
  shell->setProgram(0, 0);
  EXPECT_EQ(waiting->calls, 7);
  shell->resume();
  for (const Bytes& message : {Bytes{0x90, 36, 100}, Bytes{0xB0, 7, 64}}) {  // The controller moves a parameter.
    shell->sendKeyboardMidi(message.data(), message.size(), 0);
  }
  EXPECT_EQ(waiting->calls, 12);
  EXPECT_EQ(waiting->answered, 12);
}

}  // namespace
}  // namespace shell
