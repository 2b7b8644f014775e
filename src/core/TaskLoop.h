// Work for later: one thread per process that wakes every 100 ms and does what has become due.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

#include "core/MailServer.h"

namespace tesh::cofu::core::impl {

/// Work and when it is due.
struct Task {
  std::int64_t when = 0;         ///< In ticks of platform::monotonicTicks().
  std::function<void()> action;  ///< Runs on the task thread and lets no exception out. An empty one does nothing.
};

/// The loop lives as long as somebody holds it. Its last user waits for the thread's end, and what isn't due by then is
/// dropped: no code of this library runs afterwards. (Where an action itself lets the last reference go, its thread
/// ends on its own right after that action.)
class TaskLoop {
 public:
  static constexpr std::size_t kCapacity = 256;  ///< Tasks in the mail before posting asks for more nodes.

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
