// Keyboard focus of a window, through Xlib.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include "host/editor/WindowKeys.h"
#include "host/message/JuceX11.h"

namespace tesh::bramel::vst {
namespace {

Display* display() { return juce::XWindowSystem::getInstance()->getDisplay(); }

Window handleOf(void* window) { return reinterpret_cast<Window>(window); }

/// Root and parent of a window; None if the window is gone.
struct Ancestry {
  explicit Ancestry(Window window) {
    Window* children = nullptr;
    unsigned int count = 0;
    if (XQueryTree(display(), window, &root, &parent, &children, &count) != 0 && children != nullptr) {
      XFree(children);
    }
  }
  Window root = None;
  Window parent = None;
};

/// The ancestor just below the root: the top-level window, or the window manager's frame around it.
Window topLevelOf(Window window) {
  for (Ancestry above(window); above.parent != above.root; above = Ancestry(window)) {
    window = above.parent;
  }
  return window;
}

bool isInside(Window window, Window outer) {
  while (window != None && window != outer) {
    window = Ancestry(window).parent;
  }
  return window == outer;
}

Window focusedWindow() {
  Window focused = None;
  int revertTo = RevertToNone;
  XGetInputFocus(display(), &focused, &revertTo);
  return focused;
}

}  // namespace

void setTakesKeys(void* window, bool takesKeys) {
  constexpr long kKeys = KeyPressMask | KeyReleaseMask;
  XWindowAttributes attributes{};
  if (XGetWindowAttributes(display(), handleOf(window), &attributes) == 0) {
    return;
  }
  const long others = attributes.your_event_mask & ~kKeys;
  XSelectInput(display(), handleOf(window), takesKeys ? others | kKeys : others);
}

bool hasKeyboardFocus(void* window) { return focusedWindow() == handleOf(window); }

void* focusedBeside(void* window) {
  const Window focused = focusedWindow();
  const Window own = handleOf(window);
  const bool isWindow = focused != None && focused != PointerRoot;
  const bool isHosts = isWindow && topLevelOf(focused) == topLevelOf(own) && !isInside(focused, own);
  return isHosts ? reinterpret_cast<void*>(focused) : nullptr;  // NOLINT(performance-no-int-to-ptr): an id.
}

void* parentOf(void* window) {
  return reinterpret_cast<void*>(Ancestry(handleOf(window)).parent);  // NOLINT(performance-no-int-to-ptr): an id.
}

void giveKeyboardFocusTo(void* window) {
  XSetInputFocus(display(), handleOf(window), RevertToParent, CurrentTime);
  XFlush(display());
}

void awakenForQueuedEvents(void* window) {
  if (XEventsQueued(display(), QueuedAlready) == 0) {
    return;
  }
  XEvent nothing{};  // A message of no type, which the server sends back, so that the loop has something to read.
  nothing.xclient.type = ClientMessage;
  nothing.xclient.window = handleOf(window);
  nothing.xclient.format = 32;
  XSendEvent(display(), handleOf(window), False, NoEventMask, &nothing);
  XFlush(display());
}

}  // namespace tesh::bramel::vst

#endif
