// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <set>
#include <thread>
#include <vector>

#include "hosting/HostWindow.h"
#include "hosting/XServer.h"

namespace sivray::hosting {
namespace {

constexpr WindowSize kWindow{1600, 960};
constexpr int kDragSteps = 8;
constexpr WindowPoint kMark{1, 1};
constexpr unsigned long kColourBits = 0xFFFFFF;

/// Grabs the server for this connection: no window can disappear between finding it and querying it, which would be an
/// X error that ends the process.
class ServerGrab {
 public:
  explicit ServerGrab(Display* grabbed) : display(grabbed) { XGrabServer(display); }
  ~ServerGrab() {
    XUngrabServer(display);
    XFlush(display);
  }
  ServerGrab(const ServerGrab&) = delete;
  ServerGrab& operator=(const ServerGrab&) = delete;

 private:
  Display* display;
};

struct PictureEnd {
  void operator()(XImage* image) const { XDestroyImage(image); }
};
using Picture = std::unique_ptr<XImage, PictureEnd>;

/// Connects to the server; null if there is none. Retries, because the server refuses connections for a moment after
/// its last client has left.
Display* connect() {
  constexpr int kTries = 200;
  constexpr std::chrono::milliseconds kBetween{10};
  Display* display = XOpenDisplay(nullptr);
  for (int i = 1; i < kTries && display == nullptr; ++i) {
    std::this_thread::sleep_for(kBetween);
    display = XOpenDisplay(nullptr);
  }
  return display;
}

}  // namespace

struct HostWindow::Connection {
  Connection() = default;
  ~Connection() { XCloseDisplay(display); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Returns the direct children of a window, from the lowest up.
  std::vector<Window> insideOf(Window outer) const {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    if (outer == 0 || XQueryTree(display, outer, &root, &parent, &children, &count) == 0 || children == nullptr) {
      return {};
    }
    std::vector<Window> windows(children, children + count);
    XFree(children);
    return windows;
  }

  Window child() const {
    const std::vector<Window> windows = insideOf(window);
    return windows.empty() ? 0 : windows.front();
  }

  XWindowAttributes attributesOfChild() const {
    const ServerGrab grab(display);
    XWindowAttributes attributes{};
    if (const Window inside = child(); inside != 0) {
      XGetWindowAttributes(display, inside, &attributes);
    }
    return attributes;
  }

  struct Innermost {
    Window window = 0;
    int depth = 0;
    WindowPoint point;  ///< In the window's own coordinates.
  };
  Innermost innermostAt(WindowPoint point) const {
    Innermost found{window, 0, point};
    Window inside = window;
    while (inside != 0) {
      found.depth += inside == window ? 0 : 1;
      found.window = inside;
      if (XTranslateCoordinates(display, DefaultRootWindow(display), found.window, point.x, point.y, &found.point.x,
                                &found.point.y, &inside) == 0) {
        return {};
      }
    }
    return found;
  }

  Picture picture(WindowArea area) const {
    return Picture(XGetImage(display, DefaultRootWindow(display), area.x, area.y, static_cast<unsigned int>(area.width),
                             static_cast<unsigned int>(area.height), AllPlanes, ZPixmap));
  }

  unsigned long colourAt(WindowPoint point) const {
    const Picture pixel = picture({point.x, point.y, 1, 1});
    return pixel == nullptr ? 0 : XGetPixel(pixel.get(), 0, 0) & kColourBits;
  }

  Window focused() const {
    Window found = 0;
    int revertTo = 0;
    XGetInputFocus(display, &found, &revertTo);
    return found;
  }

  Display* const display = connect();
  Window window = 0;
  Window ownChild = 0;
  std::optional<unsigned long> markColour;
};

bool HostWindow::findServer() {
  static const XServer server;
  static const bool isThere = [] {
    if (server.display().empty()) {
      return false;
    }
    ::setenv("DISPLAY", server.display().c_str(), 1);
    Display* const display = connect();
    if (display != nullptr) {
      XCloseDisplay(display);
    }
    return display != nullptr;
  }();
  return isThere;
}

void HostWindow::beWindowManager() {
  // The server forgets atoms when its last client leaves, so this connection stays open.
  static Display* const display = connect();
  for (const char* const name : {"WM_PROTOCOLS", "WM_TAKE_FOCUS", "WM_DELETE_WINDOW", "_NET_WM_PING", "WM_CHANGE_STATE",
                                 "WM_STATE", "_NET_WM_WINDOW_TYPE", "_NET_WM_STATE", "_NET_WM_STATE_HIDDEN"}) {
    XInternAtom(display, name, False);
  }
  XSync(display, False);
}

HostWindow::HostWindow() : connection(std::make_unique<Connection>()) {
  Display* const display = connection->display;
  connection->window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, kWindow.width, kWindow.height, 0,
                                           0, WhitePixel(display, 0));
  XMapWindow(display, connection->window);
  XSync(display, False);
}

HostWindow::~HostWindow() { destroy(); }

void* HostWindow::handle() const {
  return reinterpret_cast<void*>(connection->window);  // NOLINT(performance-no-int-to-ptr): the form of the interface.
}

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

bool HostWindow::hasFocus() const { return connection->focused() == connection->window; }

void HostWindow::focusOwnChild() {
  Display* const display = connection->display;
  connection->ownChild =
      XCreateSimpleWindow(display, connection->window, kWindow.width - 10, kWindow.height - 10, 1, 1, 0, 0, 0);
  XMapWindow(display, connection->ownChild);
  XSetInputFocus(display, connection->ownChild, RevertToParent, CurrentTime);
  XSync(display, False);
}

bool HostWindow::hasOwnChildFocus() const { return connection->focused() == connection->ownChild; }

int HostWindow::otherWindows() const {
  const ServerGrab grab(connection->display);
  int others = 0;
  for (const Window window : connection->insideOf(DefaultRootWindow(connection->display))) {
    XWindowAttributes attributes{};
    const bool isThere = XGetWindowAttributes(connection->display, window, &attributes) != 0;
    others += isThere && window != connection->window && attributes.map_state == IsViewable ? 1 : 0;
  }
  return others;
}

std::uint64_t HostWindow::picture(WindowArea area) const {
  constexpr std::uint64_t kPrime = 1099511628211U;
  std::uint64_t hash = 14695981039346656037U;
  const Picture picture = connection->picture(area);
  const int bytes = picture == nullptr ? 0 : picture->bytes_per_line * picture->height;
  for (int i = 0; i < bytes; ++i) {
    hash = (hash ^ static_cast<std::uint8_t>(picture->data[i])) * kPrime;
  }
  return hash;
}

bool HostWindow::isPainted() const {
  constexpr std::size_t kFewColours = 8;
  const Picture picture = connection->picture(kWhole);
  std::set<unsigned long> colours;
  for (int y = 0; picture != nullptr && y < kWhole.height; ++y) {
    for (int x = 0; x < kWhole.width && colours.size() <= kFewColours; ++x) {
      colours.insert(XGetPixel(picture.get(), x, y));
    }
  }
  return colours.size() > kFewColours;
}

WindowView HostWindow::view() const {
  const ServerGrab grab(connection->display);
  const Connection::Innermost innermost = connection->innermostAt(kMark);
  return innermost.depth == 0 ? WindowView{} : WindowView{innermost.window, innermost.depth};
}

void HostWindow::mark() {
  Display* const display = connection->display;
  const ServerGrab grab(display);
  const Connection::Innermost painted = connection->innermostAt(kMark);
  connection->markColour.reset();
  if (painted.depth == 0) {
    return;
  }
  connection->markColour = ~connection->colourAt(kMark) & kColourBits;
  GC const context = XCreateGC(display, painted.window, 0, nullptr);
  XSetForeground(display, context, *connection->markColour);
  XDrawPoint(display, painted.window, context, painted.point.x, painted.point.y);
  XFreeGC(display, context);
  XEvent request{};
  request.xexpose.type = Expose;
  request.xexpose.window = painted.window;
  request.xexpose.x = painted.point.x;
  request.xexpose.y = painted.point.y;
  request.xexpose.width = 1;
  request.xexpose.height = 1;
  XSendEvent(display, painted.window, False, ExposureMask, &request);
}

bool HostWindow::isMarked() const {
  return connection->markColour && connection->colourAt(kMark) == *connection->markColour;
}

void HostWindow::moveTo(WindowPoint point) {
  XTestFakeMotionEvent(connection->display, -1, point.x, point.y, 0);
  XSync(connection->display, False);
}

void HostWindow::press(unsigned int button) {
  XTestFakeButtonEvent(connection->display, button, True, 0);
  XSync(connection->display, False);
}

void HostWindow::release(unsigned int button) {
  XTestFakeButtonEvent(connection->display, button, False, 0);
  XSync(connection->display, False);
}

void HostWindow::click(WindowPoint point, unsigned int button) {
  moveTo(point);
  press(button);
  release(button);
}

void HostWindow::drag(WindowPoint point, WindowPoint way) {
  moveTo(point);
  press();
  for (int step = 1; step <= kDragSteps; ++step) {
    moveTo({point.x + way.x * step / kDragSteps, point.y + way.y * step / kDragSteps});
  }
  release();
}

void HostWindow::strike(unsigned long keysym) {
  setKey(keysym, true);
  setKey(keysym, false);
}

void HostWindow::setKey(unsigned long keysym, bool isDown) {
  const KeyCode code = XKeysymToKeycode(connection->display, keysym);
  if (code != 0) {
    XTestFakeKeyEvent(connection->display, code, isDown ? True : False, 0);
    XSync(connection->display, False);
  }
}

}  // namespace sivray::hosting

#endif
