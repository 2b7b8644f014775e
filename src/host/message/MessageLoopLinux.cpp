// JUCE's message loop on a thread of our own.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <future>
#include <thread>
#include <utility>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/message/MessageLoop.h"
#include "host/message/X11Connection.h"

namespace tesh::bramel::vst {
struct MessageLoop::Impl {
  void run() {
    internWindowManagerAtoms();
    juce::initialiseJuce_GUI();
    openConnection();
    begin();
    isReady.set_value();
    while (!hasEnded) {
      serveMessages();
    }
    mayEnd.get_future().wait();
    end();
    juce::shutdownJuce_GUI();
  }

  std::function<void()> begin;
  std::function<void()> end;
  std::promise<void> isReady;
  /// Kept until the last message is posted: posting uses JUCE's manager even after the loop has ended.
  std::promise<void> mayEnd;
  bool hasEnded = false;  ///< Message thread only.
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
