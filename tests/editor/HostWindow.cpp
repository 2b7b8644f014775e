// Starts an X server if there is none, and creates and inspects the window through Xlib.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/HostWindow.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

#include <X11/Xlib.h>

namespace editor {
namespace {

/// Ends with this process. Gives its display, or nothing where the program is missing.
std::string startServer() {
  std::array<int, 2> pipe{};
  if (::pipe(pipe.data()) != 0) {
    return {};
  }
  if (::fork() == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    ::close(pipe[0]);
    const std::string file = std::to_string(pipe[1]);
    ::execlp("Xvfb", "Xvfb", "-displayfd", file.c_str(), "-screen", "0", "1700x1000x24", "-nolisten", "tcp", "-noreset",
             nullptr);
    ::_exit(1);
  }
  ::close(pipe[1]);
  std::string number;
  char digit = 0;
  while (::read(pipe[0], &digit, 1) == 1 && digit != '\n') {
    number += digit;
  }
  ::close(pipe[0]);
  return number.empty() ? std::string{} : ":" + number;
}

}  // namespace

struct HostWindow::Connection {
  Window child() const {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    if (window == 0 || XQueryTree(display, window, &root, &parent, &children, &count) == 0) {
      return 0;
    }
    const Window first = count == 0 ? 0 : children[0];
    if (children != nullptr) {
      XFree(children);
    }
    return first;
  }
  XWindowAttributes attributesOfChild() const {
    XWindowAttributes attributes{};
    if (const Window inside = child(); inside != 0) {
      XGetWindowAttributes(display, inside, &attributes);
    }
    return attributes;
  }

  Window focused() const {
    Window found = 0;
    int revertTo = 0;
    XGetInputFocus(display, &found, &revertTo);
    return found;
  }

  Display* display = XOpenDisplay(nullptr);
  Window window = 0;
  Window ownChild = 0;
};

bool HostWindow::findServer() {
  static const bool isThere = [] {
    if (std::getenv("DISPLAY") == nullptr) {
      const std::string display = startServer();
      if (display.empty()) {
        return false;
      }
      ::setenv("DISPLAY", display.c_str(), 1);
    }
    Display* const display = XOpenDisplay(nullptr);
    if (display != nullptr) {
      XCloseDisplay(display);
    }
    return display != nullptr;
  }();
  return isThere;
}

HostWindow::HostWindow() : connection(std::make_unique<Connection>()) {
  Display* const display = connection->display;
  connection->window =
      XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1600, 960, 0, 0, WhitePixel(display, 0));
  XMapWindow(display, connection->window);
  XSync(display, False);
}

HostWindow::~HostWindow() {
  destroy();
  XCloseDisplay(connection->display);
}

void* HostWindow::handle() const { return reinterpret_cast<void*>(connection->window); }

void HostWindow::destroy() {
  if (connection->window != 0) {
    XDestroyWindow(connection->display, connection->window);
    XSync(connection->display, False);
    connection->window = 0;
  }
}

WindowSize HostWindow::childSize() const {
  const XWindowAttributes attributes = connection->attributesOfChild();
  return {attributes.width, attributes.height};
}

bool HostWindow::doesChildTakeKeys() const {
  return (connection->attributesOfChild().all_event_masks & KeyPressMask) != 0;
}

void HostWindow::focusOwnChild() {
  Display* const display = connection->display;
  connection->ownChild = XCreateSimpleWindow(display, connection->window, 1590, 950, 1, 1, 0, 0, 0);
  XMapWindow(display, connection->ownChild);
  XSetInputFocus(display, connection->ownChild, RevertToParent, CurrentTime);
  XSync(display, False);
}

bool HostWindow::hasFocus() const { return connection->focused() == connection->window; }

bool HostWindow::hasOwnChildFocus() const { return connection->focused() == connection->ownChild; }

void HostWindow::movePointerTo(int x, int y) {
  XWarpPointer(connection->display, None, connection->window, 0, 0, 0, 0, x, y);
  XSync(connection->display, False);
}

}  // namespace editor
