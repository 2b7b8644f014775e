// A host's window on Windows, with the system's mouse and keys.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#ifdef _WIN32

#include "platform/WindowsApi.h"

namespace sivray::trial {

/// A frameless window in the screen's top left corner, so that its coordinates are those of the screen. To be called on
/// the thread that created it.
class TrialWindow {
 public:
  TrialWindow();
  ~TrialWindow();
  TrialWindow(const TrialWindow&) = delete;
  TrialWindow& operator=(const TrialWindow&) = delete;

  HWND handle() const { return window; }
  void destroy();
  /// Returns the plug-in's window inside this one; null while there is none.
  HWND child() const { return GetWindow(window, GW_CHILD); }
  /// Returns the number of characters that this window has received since the last call.
  int takeCharacters();

  /// Dispatches the thread's messages for this time.
  static void pump(unsigned int milliseconds);

  static void moveTo(int x, int y);
  static void press();
  static void release();
  static void rightClick();
  /// Presses and releases the key of a letter, a digit, or a virtual key code.
  static void strike(unsigned short key);

 private:
  HWND window = nullptr;
};

}  // namespace sivray::trial

#endif
