// Runs JUCE's message loop in hosts that have none. On Linux on a thread of our own, since hosts cannot be relied on to
// make idle calls; on Windows JUCE's messages are dispatched by the host's own loop on its main thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace tesh::bramel::vst {

/// JUCE runs as long as this object lives; on Windows only between `enter` and `leave`. One per process. Each system
/// has its own source file.
class MessageLoop {
 public:
#ifdef _WIN32
  static constexpr bool kIsOnHostsThread = true;
#else
  static constexpr bool kIsOnHostsThread = false;
#endif

  /// Calls `begin` on JUCE's thread when JUCE starts, and `end` there when it ends. On a thread of our own, returns
  /// once JUCE runs; throws std::system_error if no thread can be started.
  MessageLoop(std::function<void()> begin, std::function<void()> end);

  /// Returns once JUCE has ended. Must not run on the message thread itself. On the host's thread: only after all users
  /// have left.
  ~MessageLoop();

  /// Call before an editor opens. On the host's thread, the first call starts JUCE on the calling thread.
  void enter();

  /// Call after the editor has closed, on JUCE's thread. On the host's thread, the last call ends JUCE.
  void leave();

  /// Waits for a short time until the thread of `hostWindow` has returned from our code, so that the library may be
  /// unloaded. Does nothing where JUCE has a thread of our own.
  static void awaitReturn(void* hostWindow);
  MessageLoop(const MessageLoop&) = delete;
  MessageLoop& operator=(const MessageLoop&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
