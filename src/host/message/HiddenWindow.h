// A window of Windows that is never shown, for messages to the thread that made it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#ifdef _WIN32

#include <functional>
#include <memory>

#include "platform/WindowsApi.h"

namespace tesh::bramel::vst {

class HiddenWindow {
 public:
  using OnMessage = std::function<void(HWND, UINT, WPARAM)>;

  /// Calls `onMessage` for each message, on this thread, whenever the thread dispatches messages. Throws
  /// std::system_error.
  explicit HiddenWindow(OnMessage onMessage);

  /// Once it returns, no further message is handled; one that is being handled still finishes. On another thread than
  /// the window's, it waits at most half a second for that thread. If that does not answer, the window is destroyed
  /// later, and the library stays loaded until then.
  ~HiddenWindow();
  HiddenWindow(const HiddenWindow&) = delete;
  HiddenWindow& operator=(const HiddenWindow&) = delete;

  HWND handle() const { return window; }

 private:
  struct Listener;

  static LRESULT CALLBACK handleMessage(HWND window, UINT message, WPARAM wide, LPARAM other);

  const std::shared_ptr<Listener> listener;  ///< The window holds it too.
  HWND window = nullptr;
};

}  // namespace tesh::bramel::vst

#endif
