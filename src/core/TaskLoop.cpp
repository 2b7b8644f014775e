// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/TaskLoop.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Clock.h"

namespace tesh::cofu::core::impl {

namespace {

constexpr std::int64_t kRoundNanoseconds = 100'000'000;

bool isLater(const Task& a, const Task& b) { return a.when > b.when; }

}  // namespace

/// What the thread works with. It keeps its own reference, and so never outlives it.
struct TaskLoop::Rounds {
  explicit Rounds(std::shared_ptr<Mailbox<Task>> mailbox) : mail(std::move(mailbox)) {}

  void run() {
    while (sleep()) {
      collect();
      runDue();
    }
  }

  void stop() {
    {
      const std::lock_guard lock(mutex);
      isStopping = true;
    }
    wakeUp.notify_all();
  }

 private:
  /// Until the next round. Gives false when the loop is to end.
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
    while (!heap.empty() && heap.front().when <= bramel::platform::monotonicTicks() && !shallStop()) {
      heap.front().action();
      std::pop_heap(heap.begin(), heap.end(), isLater);
      heap.pop_back();
    }
  }

  bool shallStop() {
    const std::lock_guard lock(mutex);
    return isStopping;
  }

  static std::int64_t now() { return bramel::platform::monotonicNanoseconds(); }

  std::shared_ptr<Mailbox<Task>> mail;
  std::vector<Task> heap;  ///< The one due first on top.
  std::mutex mutex;
  std::condition_variable wakeUp;
  bool isStopping = false;
};

std::shared_ptr<TaskLoop> TaskLoop::acquire() {
  static std::mutex mutex;
  static std::weak_ptr<TaskLoop> current;
  const std::lock_guard lock(mutex);
  std::shared_ptr<TaskLoop> loop = current.lock();
  if (loop == nullptr) {
    loop.reset(new TaskLoop);
    current = loop;
  }
  return loop;
}

TaskLoop::TaskLoop()
    : mail(std::make_shared<Mailbox<Task>>(std::make_shared<MailServer<Task>>(kCapacity))),
      rounds(std::make_shared<Rounds>(mail)),
      thread([own = rounds] { own->run(); }) {}

TaskLoop::~TaskLoop() {
  rounds->stop();
  if (thread.get_id() == std::this_thread::get_id()) {
    thread.detach();
  } else {
    thread.join();
  }
}

}  // namespace tesh::cofu::core::impl
