// Runs JUCE where nobody else does. On Linux on a thread of our own, since no host's idle calls can be relied on; on
// Windows the host's main thread takes JUCE's messages with its own.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace tesh::bramel::vst {

/// JUCE runs as long as this object lives. One per process; one source per system.
class MessageLoop {
 public:
  /// Returns when JUCE runs and `begin` has run on its thread. `end` runs there last. Throws std::system_error if no
  /// thread can be started.
  MessageLoop(std::function<void()> begin, std::function<void()> end);

  /// Returns when JUCE has ended. Not on a thread of our own.
  ~MessageLoop();
  MessageLoop(const MessageLoop&) = delete;
  MessageLoop& operator=(const MessageLoop&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
