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
  std::int64_t when = 0;         ///< When it is due, in ticks of platform::monotonicTicks().
  std::function<void()> action;  ///< Runs on the task thread. Must not throw. An empty one does nothing.
};

/// Its users share the loop. When the last of them releases it, tasks that have not begun are dropped. If no task is
/// running, the destructor waits for the thread to end. If one is running, it may be waiting for a lock that the caller
/// holds, so the destructor does not wait: the thread ends by itself after that task, and the library stays in memory
/// for it.
class TaskLoop {
 public:
  static constexpr std::size_t kCapacity = 256;  ///< Waiting tasks; posting more allocates nodes.

  /// The loop of this process, made by its first user. Any thread.
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
