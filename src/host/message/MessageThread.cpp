// Sends work to JUCE's thread, and counts the users of the thread in this process.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/message/MessageThread.h"

#include <array>
#include <cstddef>
#include <future>
#include <mutex>
#include <system_error>

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel::vst {
namespace {

/// The thread of one kind and the number of its users. Counted here, because a new thread must not start before the old
/// one has ended.
struct Current {
  int users = 0;
  MessageThread* thread = nullptr;  ///< A plain pointer, because the process may exit while the thread runs.
};

struct Currents {
  std::mutex mutex;
  std::array<Current, 2> ofKind;

  Current& of(MessageThread::Kind kind) { return ofKind[static_cast<std::size_t>(kind)]; }
};

Currents& currents() {
  static Currents only;
  return only;
}

}  // namespace

std::shared_ptr<MessageThread> MessageThread::acquire(Kind kind) {
  const std::lock_guard lock(currents().mutex);
  Current& current = currents().of(kind);
  if (current.thread == nullptr) {
    try {
      current.thread = new MessageThread(kind);
    } catch (const std::system_error&) {
      return nullptr;
    }
  }
  ++current.users;
  return {current.thread, [kind](const MessageThread* thread) {
            const std::lock_guard userLock(currents().mutex);
            Current& used = currents().of(kind);
            if (--used.users == 0) {
              used.thread = nullptr;
              delete thread;
            }
          }};
}

MessageThread::MessageThread(Kind kind) : wakeUps(std::make_shared<WakeUps>()) {
  if (kind == Kind::own) {
    loop = std::make_unique<MessageLoop>([this] { wakeUps->start(); }, [this] { wakeUps->stop(); });
  } else {
    wakeUps->start();
  }
}

MessageThread::~MessageThread() {
  if (loop == nullptr) {
    wakeUps->stop();
  }
}

bool MessageThread::isCurrent() { return juce::MessageManager::existsAndIsLockedByCurrentThread(); }

void MessageThread::enter() {
  if (loop != nullptr) {
    loop->enter();
  }
}

void MessageThread::leave() {
  if (loop != nullptr) {
    loop->leave();
  }
}

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

}  // namespace tesh::bramel::vst
