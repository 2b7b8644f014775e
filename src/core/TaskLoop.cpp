// The thread's loop, and how it ends.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/TaskLoop.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "core/HeldByAll.h"
#include "platform/Clock.h"
#include "platform/Module.h"

namespace tesh::cofu::core::impl {

namespace {

/// Time between two rounds.
constexpr std::int64_t kRoundNanoseconds = 100'000'000;

bool isLater(const Task& a, const Task& b) { return a.when > b.when; }

}  // namespace

/// All state of the thread. The thread shares ownership, so that it may outlive the loop.
struct TaskLoop::Rounds {
  explicit Rounds(std::shared_ptr<Mailbox<Task>> mailbox) : mail(std::move(mailbox)) {}

  void run() {
    while (sleep()) {
      collect();
      runDue();
    }
  }

  /// Prevents further tasks from starting. Returns whether one is running.
  bool stop() {
    const std::lock_guard lock(mutex);
    isStopping = true;
    wakeUp.notify_all();
    return isRunning;
  }

 private:
  /// Waits for the next round. False if the loop must end.
  bool sleep() {
    const std::int64_t deadline = now() + kRoundNanoseconds;
    std::unique_lock lock(mutex);
    for (std::int64_t left = kRoundNanoseconds; left > 0 && !isStopping; left = deadline - now()) {
      wakeUp.wait_for(lock, std::chrono::nanoseconds(left));
    }
    return !isStopping;
  }

  void collect() {
    while (std::optional<Task> task = mail->receive()) {
      if (task->action) {
        heap.push_back(std::move(*task));
        std::push_heap(heap.begin(), heap.end(), isLater);
      }
    }
  }

  void runDue() {
    while (!heap.empty() && heap.front().when <= bramel::platform::monotonicTicks() && begin()) {
      heap.front().action();
      std::pop_heap(heap.begin(), heap.end(), isLater);
      heap.pop_back();
      end();
    }
  }

  bool begin() {
    const std::lock_guard lock(mutex);
    isRunning = !isStopping;
    return isRunning;
  }

  void end() {
    const std::lock_guard lock(mutex);
    isRunning = false;
  }

  static std::int64_t now() { return bramel::platform::monotonicNanoseconds(); }

  std::shared_ptr<Mailbox<Task>> mail;
  std::vector<Task> heap;  ///< A heap with the earliest task on top.
  std::mutex mutex;
  std::condition_variable wakeUp;
  bool isStopping = false;
  bool isRunning = false;  ///< From before a task starts until it has been destroyed.
};

std::shared_ptr<TaskLoop> TaskLoop::acquire() {
  static HeldByAll<TaskLoop> held;
  return held.get([] { return std::shared_ptr<TaskLoop>(new TaskLoop); });
}

TaskLoop::TaskLoop()
    : mail(std::make_shared<Mailbox<Task>>(std::make_shared<MailServer<Task>>(kCapacity))),
      rounds(std::make_shared<Rounds>(mail)),
      thread([own = rounds] { own->run(); }) {}

TaskLoop::~TaskLoop() {
  if (rounds->stop()) {
    bramel::platform::keepModuleLoaded();
    thread.detach();
  } else {
    thread.join();
  }
}

}  // namespace tesh::cofu::core::impl
