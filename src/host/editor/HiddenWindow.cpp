// A message-only window of a class that Windows has: a class of our own would outlive the library.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include "host/editor/HiddenWindow.h"

#include <system_error>
#include <utility>

namespace tesh::bramel::vst {
namespace {

constexpr UINT kEnd = WM_APP + 0x100;
constexpr UINT kLongestEnd = 500;  ///< Milliseconds.

}  // namespace

HiddenWindow::HiddenWindow(OnMessage onMessage)
    : listener(std::make_shared<OnMessage>(std::move(onMessage))),
      window(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
  if (window == nullptr) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
  }
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&listener));
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&handleMessage));
}

HiddenWindow::~HiddenWindow() {
  if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
    DestroyWindow(window);
    return;
  }
  DWORD_PTR result = 0;
  SendMessageTimeoutW(window, kEnd, 0, 0, SMTO_NORMAL, kLongestEnd, &result);
}

LRESULT CALLBACK HiddenWindow::handleMessage(HWND window, UINT message, WPARAM wide, LPARAM other) {
  if (message == kEnd) {
    DestroyWindow(window);
    return 0;
  }
  const auto* const held =
      reinterpret_cast<const std::shared_ptr<OnMessage>*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (held != nullptr && (message == WM_TIMER || message >= WM_APP)) {
    const std::shared_ptr<OnMessage> own = *held;  // The listener may destroy this object.
    (*own)(window, message, wide);
    return 0;
  }
  return DefWindowProcW(window, message, wide, other);
}

}  // namespace tesh::bramel::vst

#endif
