// A host's window on Windows, with the system's mouse and keys.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#ifdef _WIN32

#include "platform/WindowsApi.h"

namespace sivray::trial {

/// In the screen's top left corner, without a frame, so that its points are the screen's too. The thread that made it
/// calls.
class TrialWindow {
 public:
  TrialWindow();
  ~TrialWindow();
  TrialWindow(const TrialWindow&) = delete;
  TrialWindow& operator=(const TrialWindow&) = delete;

  HWND handle() const { return window; }
  void destroy();
  /// The plug-in's window inside; null while there is none.
  HWND child() const { return GetWindow(window, GW_CHILD); }
  /// Characters that came to this window since the last time.
  int takeCharacters();

  /// Dispatches the thread's messages for this time.
  static void pump(unsigned int milliseconds);

  static void moveTo(int x, int y);
  static void press();
  static void release();
  static void rightClick();
  /// Strikes the key of a letter, of a digit, or of a code of Windows.
  static void strike(unsigned short key);

 private:
  HWND window = nullptr;
};

}  // namespace sivray::trial

#endif
