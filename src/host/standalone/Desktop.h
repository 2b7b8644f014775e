// What the program asks of the desktop that it runs on, one file for each system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>
#include <functional>
#include <memory>

#include <juce_core/juce_core.h>

namespace tesh::bramel::standalone::desktop {

/// To be called first in the program, before JUCE is started.
void prepare();

/// False if no window can be shown. JUCE must be running.
bool hasScreen();

/// What to say where `hasScreen` is false.
const char* screenAdvice();

/// The size that the desktop wants programs to have, 1 to 4.
float scale();

/// Serves messages until the message manager is told to stop.
void runMessages();

/// Lets the desktop know which program's the window is. `nativeWindow` is that of its peer.
void nameWindow(void* nativeWindow);

/// Where the user's settings of this program belong; need not exist.
juce::File settingsFolder();

/// True if someone reads what the program writes to its standard error.
bool hasTerminal();

/// Answers one who has typed a command: to the standard output or error, or in a window where nobody reads those.
void say(const char* text, std::FILE* stream);

/// While it lives, a request to end the process comes as a call on the message thread. The process may be ended as soon
/// as the call returns.
class EndRequests {
 public:
  explicit EndRequests(std::function<void()> onRequest);
  ~EndRequests();
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::standalone::desktop
