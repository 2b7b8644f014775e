// The host is called while no lock of the shell is held: a host may wait in its answer for another thread that asks for
// a parameter, or that renders a block, as hosts do that lock their graph for both.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <chrono>
#include <functional>
#include <future>
#include <thread>

#include "shell/ShellScene.h"

namespace shell {
namespace {

/// Answers each call only when another thread has read a parameter or rendered a block, or after two seconds.
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
    answered += answer.wait_for(std::chrono::seconds(2)) == std::future_status::ready ? 1 : 0;
    ++calls;
  }

  BramelInstrument& instrument;
  std::vector<std::jthread> readers;
  int calls = 0;
  int answered = 0;
};

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
