// The hidden window, created on one thread and released on another.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstring>
#include <future>
#include <new>
#include <thread>

#include "host/message/HiddenWindow.h"

namespace {

using tesh::bramel::vst::HiddenWindow;

constexpr UINT kCall = WM_APP;

/// Dispatches this thread's pending messages.
void pump() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    DispatchMessageW(&message);
  }
}

/// A window in the test's own memory, and the thread that has created it.
class HiddenWindowTest : public testing::Test {
 protected:
  /// Creates the window on a thread that is busy until `mayGoOn`, then dispatches the messages that have arrived, and
  /// ends.
  void makeOnBusyThread() {
    thread = std::thread([this] {
      window = new (memory.data()) HiddenWindow([this](HWND, UINT, WPARAM) { ++calls; });
      handle = window->handle();
      isMade.set_value();
      mayGoOn.get_future().wait();
      pump();
      isGone = IsWindow(handle) == FALSE;
    });
    isMade.get_future().wait();
  }

  alignas(HiddenWindow) std::array<unsigned char, sizeof(HiddenWindow)> memory{};
  HiddenWindow* window = nullptr;
  HWND handle = nullptr;
  std::promise<void> isMade;
  std::promise<void> mayGoOn;
  std::atomic<int> calls = 0;
  std::atomic<bool> isGone = false;
  std::thread thread;
};

TEST_F(HiddenWindowTest, TakesItsMessagesUntilItGoes) {
  const HiddenWindow own([this](HWND, UINT, WPARAM) { ++calls; });
  ASSERT_NE(PostMessageW(own.handle(), kCall, 0, 0), FALSE);
  pump();
  EXPECT_EQ(calls, 1);
}

TEST_F(HiddenWindowTest, MayGoWhileItsThreadIsBusyForLong) {
  makeOnBusyThread();
  PostMessageW(handle, kCall, 0, 0);
  window->~HiddenWindow();  // Waits for half a second without success.
  memory.fill(0xEE);
  PostMessageW(handle, kCall, 0, 0);
  mayGoOn.set_value();
  thread.join();
  EXPECT_EQ(calls, 0) << "nobody listens any more";
  EXPECT_TRUE(isGone);
}

}  // namespace
