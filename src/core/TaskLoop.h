// The timer thread, one per process. It wakes every 100 ms and runs the tasks that are due.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

#include "core/MailServer.h"

namespace tesh::cofu::core::impl {

struct Task {
  std::int64_t when = 0;         ///< Due time in ticks of platform::monotonicTicks().
  std::function<void()> action;  ///< Runs on the task thread. Must not throw. An empty one does nothing.
};

/// All users share the loop. When the last one releases it, tasks that have not started are dropped. If no task is
/// running, the destructor waits for the thread to end. A running task may be waiting for a lock that the caller holds,
/// so in that case the destructor does not wait: the thread ends by itself after the task, and keeps the library in
/// memory until then.
class TaskLoop {
 public:
  static constexpr std::size_t kCapacity = 256;  ///< Tasks that can wait without allocation.

  /// The process's loop, made by its first user. Any thread.
  static std::shared_ptr<TaskLoop> acquire();

  ~TaskLoop();
  TaskLoop(const TaskLoop&) = delete;
  TaskLoop& operator=(const TaskLoop&) = delete;

  /// Posts copies of the tasks from `first` to `last` in one step. They run up to about 100 ms late. Any thread but the
  /// audio thread.
  template <typename Iterator>
  void postTasks(Iterator first, Iterator last) {
    mail->postAll(first, last);
  }

 private:
  struct Rounds;

  TaskLoop();

  std::shared_ptr<Mailbox<Task>> mail;
  std::shared_ptr<Rounds> rounds;
  std::thread thread;
};

}  // namespace tesh::cofu::core::impl
