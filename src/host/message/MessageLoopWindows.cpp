// JUCE on the thread of a host that opens an editor: the host's own message loop serves JUCE's windows and messages.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include <mutex>
#include <utility>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/message/MessageLoop.h"
#include "platform/Module.h"
#include "platform/WindowsApi.h"

namespace tesh::bramel::vst {
namespace {

constexpr UINT kLongestReturn = 500;  ///< Milliseconds.

}  // namespace

struct MessageLoop::Impl {
  std::function<void()> begin;
  std::function<void()> end;
  std::mutex mutex;  ///< Guards `users`: two threads of a host may open editors at the same time.
  int users = 0;
};

MessageLoop::MessageLoop(std::function<void()> begin, std::function<void()> end) : impl(std::make_unique<Impl>()) {
  impl->begin = std::move(begin);
  impl->end = std::move(end);
}

MessageLoop::~MessageLoop() = default;

void MessageLoop::enter() {
  const std::lock_guard lock(impl->mutex);
  if (++impl->users > 1) {
    return;
  }
  juce::Process::setCurrentModuleInstanceHandle(platform::moduleHandle());
  juce::initialiseJuce_GUI();
  impl->begin();
}

void MessageLoop::leave() {
  const std::lock_guard lock(impl->mutex);
  if (--impl->users > 0) {
    return;
  }
  impl->end();
  juce::shutdownJuce_GUI();
}

void MessageLoop::awaitReturn(void* hostWindow) {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(static_cast<HWND>(hostWindow), WM_NULL, 0, 0, SMTO_NORMAL, kLongestReturn, &result);
}

}  // namespace tesh::bramel::vst

#endif
