// The thread on which all of JUCE happens. On Linux it is one of our own, since no host's idle calls can be relied on;
// on Windows it is the host's main thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Has something to do when the message thread was woken.
class WakeUpListener {
 public:
  virtual ~WakeUpListener() = default;

  /// Message thread, once for any number of wake-ups that came in between. Others' wake-ups count too.
  virtual void wokenUp() = 0;
};

/// One per process: the first user starts it, and the last one to let go waits for its end. Nothing made on it may
/// outlive it. Any thread may call any operation, but for the audio thread, which may only call `wakeUp`.
class MessageThread {
 public:
  using Work = std::function<void()>;

  /// Null if the thread cannot be started.
  static std::shared_ptr<MessageThread> acquire();

  /// Waits for the thread's end. Not on the message thread itself.
  ~MessageThread();
  MessageThread(const MessageThread&) = delete;
  MessageThread& operator=(const MessageThread&) = delete;

  bool isCurrent() const;

  /// Runs `work` on the message thread, and returns when it has run.
  void callAndWait(const Work& work);

  /// The same, but waits for `longest` at most: false says that `work` still has to run. It must own what it uses.
  bool callAndWait(Work work, std::chrono::milliseconds longest);

  /// Runs `work` on the message thread, never before this returns if called there. It must own what it uses.
  void callLater(Work work);

  /// Listens until it is gone. Message thread.
  void addListener(std::weak_ptr<WakeUpListener> listener);

  /// Wakes all listeners: at once when they are at rest, and every few milliseconds while wake-ups keep coming. Audio
  /// thread too: it takes no memory and no lock, and calls the system only for the first of a row.
  void wakeUp() SIVRAY_NONBLOCKING;

 private:
  struct Loop;

  explicit MessageThread(std::unique_ptr<Loop> newLoop);

  std::unique_ptr<Loop> loop;
};

}  // namespace tesh::bramel::vst
