// The message thread on Linux: a thread of our own that runs JUCE's message loop while an editor exists.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <sys/eventfd.h>
#include <sys/timerfd.h>
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

namespace {

/// Between two looks of the listeners while wake-ups keep coming: more often than a screen shows a picture. The audio
/// thread need not call the system for each of its blocks then.
constexpr long kRestNanoseconds = 8'000'000;

/// A file of the system that this object closes.
class OwnedFile {
 public:
  /// Throws std::system_error for a number below 0, with what errno says.
  explicit OwnedFile(int file) : number(file) {
    if (number < 0) {
      throw std::system_error(errno, std::generic_category());
    }
  }
  ~OwnedFile() { ::close(number); }
  OwnedFile(const OwnedFile&) = delete;
  OwnedFile& operator=(const OwnedFile&) = delete;
  operator int() const { return number; }

  /// Takes the count that waits in the file.
  void takeCount() const {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t bytes = ::read(number, &count, sizeof(count));
  }

 private:
  const int number;
};

}  // namespace

struct MessageThread::Loop {
  Loop()
      : wakeUpFile(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
        restFile(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {}
  Loop(const Loop&) = delete;
  Loop& operator=(const Loop&) = delete;

  void run() {
    internWindowManagerAtoms();
    juce::initialiseJuce_GUI();
    openConnection();
    juce::MessageManager* const manager = juce::MessageManager::getInstance();
    juce::LinuxEventLoop::registerFdCallback(wakeUpFile, [this](int) { takeWakeUp(); });
    juce::LinuxEventLoop::registerFdCallback(restFile, [this](int) { endRest(); });
    isReady.set_value();
    manager->runDispatchLoop();
    mayEnd.get_future().wait();
    juce::LinuxEventLoop::unregisterFdCallback(restFile);
    juce::LinuxEventLoop::unregisterFdCallback(wakeUpFile);
    juce::shutdownJuce_GUI();
  }

  void takeWakeUp() {
    wakeUpFile.takeCount();
    tellAndRest();
  }

  void endRest() {
    restFile.takeCount();
    State resting = State::resting;
    if (!state.compare_exchange_strong(resting, State::idle)) {
      tellAndRest();
    }
  }

  void tellAndRest() {
    state = State::resting;  // Before the listeners look: what comes after their look wakes them again.
    const itimerspec rest{{0, 0}, {0, kRestNanoseconds}};
    ::timerfd_settime(restFile, 0, &rest, nullptr);
    std::erase_if(listeners, [](const auto& held) { return held.expired(); });
    for (std::size_t i = 0; i < listeners.size(); ++i) {
      if (const auto listener = listeners[i].lock()) {
        listener->wokenUp();
      }
    }
  }

  enum class State : std::uint8_t {
    idle,     ///< A wake-up has to call the system.
    resting,  ///< The listeners have just looked.
    wanted    ///< They look at the end of the rest, or as soon as the thread is awake.
  };

  const OwnedFile wakeUpFile;
  const OwnedFile restFile;
  std::atomic<State> state = State::idle;
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
  if (loop->state.exchange(Loop::State::wanted) != Loop::State::idle) {
    return;
  }
  cofu::core::mayWait([this] {  // The one call of the system that the audio thread makes. It does not wait.
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t bytes = ::write(loop->wakeUpFile, &one, sizeof(one));
  });
}

}  // namespace tesh::bramel::vst

#endif
