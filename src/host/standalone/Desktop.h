// The desktop's services that the program uses. One source file per system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>
#include <functional>
#include <memory>

namespace tesh::bramel::standalone::desktop {

/// Must be called first in the program, before JUCE is started.
void prepare();

/// False if no window can be shown. JUCE must be running.
bool hasScreen();

/// Text for the user where `hasScreen` is false.
const char* screenAdvice();

/// The desktop's scale for programs, 1 to 4; on Windows that of the main screen.
float scale();

/// Runs the message loop until the message manager is told to stop.
void runMessages();

/// Tells the desktop to which program the window belongs. `nativeWindow` is the handle of its peer.
void nameWindow(void* nativeWindow);

/// Reports the system's scale for a window, 1 to 4, on the message thread: at once, and whenever the window moves to a
/// screen of another scale. Reports nothing on systems where `scale` holds for all screens.
class WindowScale {
 public:
  WindowScale(void* nativeWindow, const std::function<void(float)>& tell);
  ~WindowScale();
  WindowScale(const WindowScale&) = delete;
  WindowScale& operator=(const WindowScale&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

/// Whether someone reads the program's standard error.
bool hasTerminal();

/// Prints to the standard output or error, or shows a window if nobody reads those.
void say(const char* text, std::FILE* stream);

/// Turns a request to end the process into two calls on the message thread: `save`, as early as the system announces
/// the end, and `end`. The process may be ended as soon as `save` returns. If the system only asks whether the session
/// may end, the session may continue after `save`, and `save` may be called again later.
class EndRequests {
 public:
  EndRequests(std::function<void()> save, std::function<void()> end);
  ~EndRequests();
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::standalone::desktop
