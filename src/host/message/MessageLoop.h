// Runs JUCE where nobody else does. On Linux on a thread of our own, since no host's idle calls can be relied on; on
// Windows the host's main thread takes JUCE's messages with its own.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace tesh::bramel::vst {

/// JUCE runs as long as this object lives, on Windows while it is entered. One per process; one source per system.
class MessageLoop {
 public:
#ifdef _WIN32
  static constexpr bool kIsOnHostsThread = true;
#else
  static constexpr bool kIsOnHostsThread = false;
#endif

  /// Where JUCE starts, `begin` runs on its thread, and `end` where it ends. On a thread of our own, returns when JUCE
  /// runs, and throws std::system_error if no thread can be started.
  MessageLoop(std::function<void()> begin, std::function<void()> end);

  /// Returns when JUCE has ended. Not on a thread of our own; where the thread is the host's, once all have left.
  ~MessageLoop();

  /// Before an editor opens. On the host's thread: the first one in starts JUCE on the thread that calls.
  void enter();

  /// After it has closed, on JUCE's thread. On the host's thread: the last one out ends JUCE.
  void leave();

  /// Returns when the thread of `hostWindow` has left our code, if it does so soon: the library may then be unloaded.
  /// Does nothing on a thread of our own.
  static void awaitReturn(void* hostWindow);
  MessageLoop(const MessageLoop&) = delete;
  MessageLoop& operator=(const MessageLoop&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
