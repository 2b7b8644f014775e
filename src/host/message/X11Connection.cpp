// Prepares JUCE's X connection for use inside a host.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include "host/message/X11Connection.h"

#include <poll.h>

#include <array>
#include <vector>

#include "host/message/JuceX11.h"

#include <juce_events/native/juce_linux_EventLoopInternal.h>

#include <X11/Xlibint.h>  // Defines min and max: last.

namespace juce {

// Defined by JUCE, which declares it in no header. Calls the callbacks of all readable descriptors; false if there was
// none.
bool dispatchNextMessageOnSystemQueue(bool returnIfNoPendingMessages);

}  // namespace juce

namespace tesh::bramel::vst {
namespace {

/// The range of error codes, those of extensions included.
constexpr int kFirstError = 1;
constexpr int kLastError = 255;

// The signature is Xlib's: an error reader gets non-const pointers.
Bool dropError(Display* /*display*/, XErrorEvent* /*error*/, xError* /*wire*/) { return False; }

/// Waits until a descriptor that JUCE listens to is readable, for at most two seconds, because another thread may
/// register one more meanwhile.
void waitForFiles() {
  constexpr int kLongest = 2000;  // Milliseconds.
  std::vector<pollfd> files;
  for (const int file : juce::LinuxEventLoopInternal::getRegisteredFds()) {
    files.push_back({file, POLLIN, 0});
  }
  ::poll(files.data(), files.size(), kLongest);
}

}  // namespace

void internWindowManagerAtoms() {
  Display* const display = XOpenDisplay(nullptr);
  if (display == nullptr) {
    return;
  }
  std::array<const char*, 9> names{"WM_PROTOCOLS",        "WM_TAKE_FOCUS",   "WM_DELETE_WINDOW",
                                   "_NET_WM_PING",        "WM_CHANGE_STATE", "WM_STATE",
                                   "_NET_WM_WINDOW_TYPE", "_NET_WM_STATE",   "_NET_WM_STATE_HIDDEN"};
  std::array<Atom, names.size()> atoms{};
  XInternAtoms(display, const_cast<char**>(names.data()), static_cast<int>(names.size()), False, atoms.data());
  XCloseDisplay(display);
}

bool openConnection() {
  Display* const display = juce::XWindowSystem::getInstance()->getDisplay();
  if (display == nullptr) {
    return false;
  }
  for (int code = kFirstError; code <= kLastError; ++code) {
    XESetWireToError(display, code, dropError);
  }
  return true;
}

bool takeQueuedEvents() {
  Display* const display = juce::XWindowSystem::getInstance()->getDisplay();
  if (display == nullptr || XEventsQueued(display, QueuedAlready) == 0) {
    return false;
  }
  juce::LinuxEventLoopInternal::invokeEventLoopCallbackForFd(ConnectionNumber(display));
  return true;
}

bool takeMessages() { return juce::dispatchNextMessageOnSystemQueue(true) || takeQueuedEvents(); }

void serveMessages() {
  if (!takeMessages()) {
    waitForFiles();
  }
}

}  // namespace tesh::bramel::vst

#endif
