// The message thread on Linux: a thread of our own that runs JUCE's message loop while an editor exists.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <future>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/editor/MessageThread.h"
#include "host/editor/X11Connection.h"

namespace tesh::bramel::vst {

struct MessageThread::Loop {
  Loop() : wakeUpFile(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (wakeUpFile < 0) {
      throw std::system_error(errno, std::generic_category());
    }
  }
  ~Loop() { ::close(wakeUpFile); }
  Loop(const Loop&) = delete;
  Loop& operator=(const Loop&) = delete;

  void run() {
    internWindowManagerAtoms();
    juce::initialiseJuce_GUI();
    openConnection();
    juce::MessageManager* const manager = juce::MessageManager::getInstance();
    juce::LinuxEventLoop::registerFdCallback(wakeUpFile, [this](int) { takeWakeUp(); });
    isReady.set_value();
    manager->runDispatchLoop();
    mayEnd.get_future().wait();
    juce::LinuxEventLoop::unregisterFdCallback(wakeUpFile);
    juce::shutdownJuce_GUI();
  }

  void takeWakeUp() {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t bytes = ::read(wakeUpFile, &count, sizeof(count));
    isPending = false;  // Before the listeners look: what comes after their look wakes them again.
    std::erase_if(listeners, [](const auto& held) { return held.expired(); });
    for (std::size_t i = 0; i < listeners.size(); ++i) {
      if (const auto listener = listeners[i].lock()) {
        listener->wokenUp();
      }
    }
  }

  const int wakeUpFile;
  std::atomic<bool> isPending = false;                   ///< A wake-up is under way.
  std::vector<std::weak_ptr<WakeUpListener>> listeners;  ///< The message thread's.
  std::promise<void> isReady;
  std::promise<void> mayEnd;  ///< To stop the dispatch loop uses JUCE's manager also when the loop has ended.
  std::thread thread;
};

namespace {

/// The thread of the process and its users, counted here: a new one must not start before the old one has ended.
struct Current {
  std::mutex mutex;
  int users = 0;
  MessageThread* thread = nullptr;  ///< Not owned by an object with a destructor: a process may exit while it runs.
};

Current& current() {
  static Current only;
  return only;
}

void letGo(const MessageThread* thread) {
  Current& only = current();
  const std::lock_guard lock(only.mutex);
  if (--only.users == 0) {
    only.thread = nullptr;
    delete thread;
  }
}

}  // namespace

std::shared_ptr<MessageThread> MessageThread::acquire() {
  Current& only = current();
  const std::lock_guard lock(only.mutex);
  if (only.thread == nullptr) {
    try {
      only.thread = new MessageThread(std::make_unique<Loop>());
    } catch (const std::system_error&) {
      return nullptr;
    }
  }
  ++only.users;
  return {only.thread, letGo};
}

MessageThread::MessageThread(std::unique_ptr<Loop> newLoop) : loop(std::move(newLoop)) {
  loop->thread = std::thread([own = loop.get()] { own->run(); });
  loop->isReady.get_future().wait();
}

MessageThread::~MessageThread() {
  juce::MessageManager::getInstance()->stopDispatchLoop();
  loop->mayEnd.set_value();
  loop->thread.join();
}

bool MessageThread::isCurrent() const { return std::this_thread::get_id() == loop->thread.get_id(); }

void MessageThread::callAndWait(const Work& work) {
  if (isCurrent()) {
    work();
    return;
  }
  std::promise<void> isDone;
  if (juce::MessageManager::callAsync([&] {
        work();
        isDone.set_value();
      })) {
    isDone.get_future().wait();
  }
}

bool MessageThread::callAndWait(Work work, std::chrono::milliseconds longest) {
  if (isCurrent()) {
    work();
    return true;
  }
  const auto isDone = std::make_shared<std::promise<void>>();
  auto done = isDone->get_future();
  return juce::MessageManager::callAsync([isDone, own = std::move(work)] {
           own();
           isDone->set_value();
         }) &&
         done.wait_for(longest) == std::future_status::ready;
}

void MessageThread::callLater(Work work) { juce::MessageManager::callAsync(std::move(work)); }

void MessageThread::addListener(std::weak_ptr<WakeUpListener> listener) {
  loop->listeners.push_back(std::move(listener));
}

void MessageThread::wakeUp() {
  if (loop->isPending.exchange(true)) {
    return;
  }
  cofu::core::mayWait([this] {  // The one call of the system that the audio thread makes. It does not wait.
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t bytes = ::write(loop->wakeUpFile, &one, sizeof(one));
  });
}

}  // namespace tesh::bramel::vst

#endif
