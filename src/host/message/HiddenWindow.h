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

  /// Its messages come to `onMessage` on this thread, while the thread dispatches messages. Throws std::system_error.
  explicit HiddenWindow(OnMessage onMessage);

  /// Afterwards no message begins to be handled; one that is under way ends in its own time. From another thread, waits
  /// half a second at most for the thread that made the window. If that does not answer, the window goes later, and the
  /// library stays loaded for it.
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
