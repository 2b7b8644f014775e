// The thread on which everything of JUCE happens, as an editor sees it: either one that this library starts, or the one
// on which a program or a plug-in wrapper already runs JUCE.
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

/// One of each kind per process: the first user makes it, and it ends with its last user. Nothing that was made on a
/// thread of the kind `own` may outlive it. Work is dropped while JUCE does not run. Any thread may call any operation;
/// the audio thread only `wakeUp`.
class MessageThread {
 public:
  using Work = std::function<void()>;

  enum class Kind : std::uint8_t {
    own,     ///< This library starts and ends JUCE (MessageLoop), in hosts that do not use JUCE.
    running  ///< JUCE runs before the first user comes and after the last one has gone.
  };

  /// Null if the thread cannot be started. The kind `running` must be acquired on the thread that runs JUCE.
  static std::shared_ptr<MessageThread> acquire(Kind kind);

  /// For the kind `own`, waits until the thread has ended, so it must not run on that thread.
  ~MessageThread();
  MessageThread(const MessageThread&) = delete;
  MessageThread& operator=(const MessageThread&) = delete;

  /// True on the message thread, and on a thread that holds its lock while the message thread waits: JUCE's VST 3
  /// wrapper makes editors that way.
  static bool isCurrent();

  /// Call before an editor opens; see MessageLoop::enter. Does nothing for the kind `running`.
  void enter();
  /// Call after the editor has closed. Message thread.
  void leave();

  /// Runs `work` on the message thread, and returns when it has run.
  void callAndWait(const Work& work);

  /// As above, but waits for `longest` at most. Returns false if `work` has not run yet, so `work` must own its data.
  bool callAndWait(Work work, std::chrono::milliseconds longest);

  /// Runs `work` on the message thread; if called there, after this call has returned. `work` must own its data.
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
