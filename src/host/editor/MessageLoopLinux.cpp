// JUCE's message loop on a thread of our own.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <poll.h>

#include <future>
#include <thread>
#include <utility>
#include <vector>

#include <juce_gui_basics/juce_gui_basics.h>

// After the module, whose parts these headers are.
#include <juce_events/native/juce_linux_EventLoopInternal.h>

#include "host/editor/MessageLoop.h"
#include "host/editor/X11Connection.h"

namespace juce {

// Defined by JUCE, which declares it in no header. Calls back for every file that can be read; false if there was none.
bool dispatchNextMessageOnSystemQueue(bool returnIfNoPendingMessages);

}  // namespace juce

namespace tesh::bramel::vst {
namespace {

/// Waits until one of the files that JUCE listens to can be read.
void waitForFiles() {
  constexpr int kWithoutLimit = -1;
  std::vector<pollfd> files;
  for (const int file : juce::LinuxEventLoopInternal::getRegisteredFds()) {
    files.push_back({file, POLLIN, 0});
  }
  ::poll(files.data(), files.size(), kWithoutLimit);
}

}  // namespace

struct MessageLoop::Impl {
  void run() {
    internWindowManagerAtoms();
    juce::initialiseJuce_GUI();
    openConnection();
    begin();
    isReady.set_value();
    while (!hasEnded) {
      if (!juce::dispatchNextMessageOnSystemQueue(true) && !takeQueuedEvents()) {
        waitForFiles();
      }
    }
    mayEnd.get_future().wait();
    end();
    juce::shutdownJuce_GUI();
  }

  std::function<void()> begin;
  std::function<void()> end;
  std::promise<void> isReady;
  std::promise<void> mayEnd;  ///< To post a message uses JUCE's manager also when the loop has ended.
  bool hasEnded = false;      ///< The message thread's.
  std::thread thread;
};

MessageLoop::MessageLoop(std::function<void()> begin, std::function<void()> end) : impl(std::make_unique<Impl>()) {
  impl->begin = std::move(begin);
  impl->end = std::move(end);
  impl->thread = std::thread([own = impl.get()] { own->run(); });
  impl->isReady.get_future().wait();
}

MessageLoop::~MessageLoop() {
  juce::MessageManager::callAsync([own = impl.get()] { own->hasEnded = true; });
  impl->mayEnd.set_value();
  impl->thread.join();
}

void MessageLoop::enter() {}

void MessageLoop::leave() {}

void MessageLoop::awaitReturn(void* /*hostWindow*/) {}

}  // namespace tesh::bramel::vst

#endif
