// The task loop: when tasks run, and how it stops.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/TaskLoop.h"

#include <gmock/gmock.h>

#include <future>
#include <mutex>

#include "platform/Clock.h"

namespace tesh::cofu::core::impl {
namespace {

using bramel::platform::monotonicTicks;

constexpr std::int64_t kTicksPerMillisecond = 10'000;

TEST(TaskLoop, RunsTasksInTheOrderOfTheirTimesOnOneThread) {
  std::vector<int> order;
  std::promise<std::int64_t> done;
  const auto loop = TaskLoop::acquire();
  EXPECT_EQ(loop, TaskLoop::acquire());
  const std::int64_t start = monotonicTicks();
  const auto note = [&order](int number) { return [&order, number] { order.push_back(number); }; };
  const std::vector<Task> tasks{{start + 250 * kTicksPerMillisecond, [&] { done.set_value(monotonicTicks()); }},
                                {start - 1, note(2)},
                                {start, {}},
                                {start - 3, note(0)},
                                {start, note(3)},
                                {start - 2, note(1)}};
  loop->postTasks(tasks.begin(), tasks.end());
  EXPECT_GE(done.get_future().get(), start + 250 * kTicksPerMillisecond);
  EXPECT_THAT(order, testing::ElementsAre(0, 1, 2, 3));
}

TEST(TaskLoop, EndsWithItsLastUserAndBeginsAnewWithTheNext) {
  for (int round = 0; round < 3; ++round) {
    const auto held = std::make_shared<int>(round);
    auto loop = TaskLoop::acquire();
    const std::vector<Task> tasks{{monotonicTicks() + 3600'000 * kTicksPerMillisecond, [held] { FAIL(); }},
                                  {monotonicTicks(), [held] {}}};
    loop->postTasks(tasks.begin(), tasks.end());
    const std::int64_t before = monotonicTicks();
    loop.reset();
    EXPECT_LT(monotonicTicks() - before, 5000 * kTicksPerMillisecond);
    EXPECT_EQ(held.use_count(), 3) << "beyond the two in the list, a task has outlived its loop";
  }
}

TEST(TaskLoop, EndsWhileOneOfItsTasksWaitsForALockOfItsLastUser) {
  struct Meeting {
    std::mutex held;
    std::promise<void> begun;
    std::promise<void> finished;
  };
  // Shared, because the task may still use it when the test sees its end.
  const auto meeting = std::make_shared<Meeting>();
  auto loop = TaskLoop::acquire();
  {
    const std::lock_guard lock(meeting->held);
    const std::vector<Task> tasks{{0, [meeting] {
                                     meeting->begun.set_value();
                                     const std::lock_guard wanted(meeting->held);
                                     meeting->finished.set_value();
                                   }}};
    loop->postTasks(tasks.begin(), tasks.end());
    meeting->begun.get_future().get();
    loop.reset();
  }
  meeting->finished.get_future().get();
}

TEST(TaskLoop, MayBeLetGoByItsOwnTask) {
  const auto done = std::make_shared<std::promise<void>>();
  const auto lastUser = std::make_shared<std::shared_ptr<TaskLoop>>(TaskLoop::acquire());
  const std::vector<Task> tasks{{0, [lastUser, done] {
                                   lastUser->reset();
                                   done->set_value();
                                 }}};
  (*lastUser)->postTasks(tasks.begin(), tasks.end());
  done->get_future().get();
}

}  // namespace
}  // namespace tesh::cofu::core::impl
