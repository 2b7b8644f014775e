// The thread on which all of JUCE happens, as an editor sees it: one that this library starts for itself, or the one on
// which a program or a plug-in wrapper runs JUCE already.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "core/RealTime.h"
#include "host/message/MessageLoop.h"
#include "host/message/WakeUps.h"

namespace tesh::bramel::vst {

/// One of each kind per process: the first user makes it, and the last one to let go ends it. Nothing made on a thread
/// of its own may outlive it. While JUCE does not run, work for its thread is dropped. Any thread may call any
/// operation, except the audio thread, which may only call `wakeUp`.
class MessageThread {
 public:
  using Work = std::function<void()>;

  enum class Kind : std::uint8_t {
    own,     ///< This library starts and ends JUCE (MessageLoop): in hosts that know nothing of it.
    running  ///< JUCE runs before the first user comes and after the last one has gone.
  };

  /// Null if the thread cannot be started. The kind `running` must be acquired on the thread that runs JUCE.
  static std::shared_ptr<MessageThread> acquire(Kind kind);

  /// With a thread of its own, waits for its end; must not run there then.
  ~MessageThread();
  MessageThread(const MessageThread&) = delete;
  MessageThread& operator=(const MessageThread&) = delete;

  /// Whether this is the message thread, or one that holds its lock, while the message thread waits: JUCE's VST 3
  /// wrapper makes editors so.
  static bool isCurrent();

  /// Before an editor opens; see MessageLoop::enter. Nothing where JUCE runs already.
  void enter();
  /// After it has closed. Message thread.
  void leave();

  /// Runs `work` on the message thread, and returns when it has run.
  void callAndWait(const Work& work);

  /// The same, but waits for `longest` at most: false says that `work` still has to run. It must own what it uses.
  bool callAndWait(Work work, std::chrono::milliseconds longest);

  /// Runs `work` on the message thread, never before this returns if called there. It must own what it uses.
  void callLater(Work work);

  /// The listener is held weakly. Message thread.
  void addListener(std::weak_ptr<WakeUpListener> listener) { wakeUps->addListener(std::move(listener)); }

  /// Wakes all listeners, as WakeUps::wake does. Audio thread too.
  void wakeUp() SIVRAY_NONBLOCKING { wakeUps->wake(); }

 private:
  explicit MessageThread(Kind kind);

  const std::shared_ptr<WakeUps> wakeUps;
  std::unique_ptr<MessageLoop> loop;  ///< Null where JUCE runs already.
};

}  // namespace tesh::bramel::vst
