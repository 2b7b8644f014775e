// A message-only window. It has one of Windows' own classes, because a class of our own would outlive the library.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include "host/message/HiddenWindow.h"

#include <atomic>
#include <system_error>
#include <utility>

#include "platform/Module.h"

namespace tesh::bramel::vst {
namespace {

constexpr UINT kEnd = WM_APP + 0x100;
constexpr UINT kLongestEnd = 500;  ///< Milliseconds.

}  // namespace

struct HiddenWindow::Listener {
  explicit Listener(OnMessage call) : onMessage(std::move(call)) {}

  const OnMessage onMessage;
  std::atomic<bool> hasLeft = false;
};

HiddenWindow::HiddenWindow(OnMessage onMessage)
    : listener(std::make_shared<Listener>(std::move(onMessage))),
      window(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
  if (window == nullptr) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
  }
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(new std::shared_ptr<Listener>(listener)));
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&handleMessage));
}

HiddenWindow::~HiddenWindow() {
  listener->hasLeft = true;
  if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
    DestroyWindow(window);
    return;
  }
  DWORD_PTR result = 0;
  if (SendMessageTimeoutW(window, kEnd, 0, 0, SMTO_NORMAL, kLongestEnd, &result) == 0 && IsWindow(window) != FALSE) {
    platform::keepModuleLoaded();
    PostMessageW(window, kEnd, 0, 0);
  }
}

LRESULT CALLBACK HiddenWindow::handleMessage(HWND window, UINT message, WPARAM wide, LPARAM other) {
  if (message == kEnd) {
    DestroyWindow(window);
    return 0;
  }
  // Windows keeps the pointer as a number. NOLINTNEXTLINE(performance-no-int-to-ptr)
  const auto* const held = reinterpret_cast<const std::shared_ptr<Listener>*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (held != nullptr && message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    delete held;
  } else if (held != nullptr && (message == WM_TIMER || message >= WM_APP)) {
    const std::shared_ptr<Listener> own = *held;  // The listener may destroy this object.
    if (!own->hasLeft) {
      own->onMessage(window, message, wide);
    }
    return 0;
  }
  return DefWindowProcW(window, message, wide, other);
}

}  // namespace tesh::bramel::vst

#endif
