// What the program asks of the desktop that it runs on, one file for each system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>
#include <functional>
#include <memory>

namespace tesh::bramel::standalone::desktop {

/// To be called first in the program, before JUCE is started.
void prepare();

/// False if no window can be shown. JUCE must be running.
bool hasScreen();

/// What to say where `hasScreen` is false.
const char* screenAdvice();

/// The size that the desktop wants programs to have, 1 to 4; on Windows on the main screen.
float scale();

/// Serves messages until the message manager is told to stop.
void runMessages();

/// Lets the desktop know which program's the window is. `nativeWindow` is that of its peer.
void nameWindow(void* nativeWindow);

/// While it lives, a window follows the scale that the system wants for it, 1 to 4, which it tells on the message
/// thread: at once, and when the window comes to a screen of another scale. Where `scale` holds for all screens it
/// tells nothing.
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

/// True if someone reads what the program writes to its standard error.
bool hasTerminal();

/// Answers one who has typed a command: to the standard output or error, or in a window where nobody reads those.
void say(const char* text, std::FILE* stream);

/// While it lives, a request to end the process comes as two calls on the message thread: `save`, as early as the
/// system says that the end is near, and `end`. The process may be ended as soon as `save` returns. Where the system
/// only asks whether it may end the session, it may go on after `save`, and call it again later.
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
