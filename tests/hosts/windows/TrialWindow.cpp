// A native window, its messages, and a mouse that the program moves.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include "TrialWindow.h"

#include <utility>

namespace sivray::trial {
namespace {

constexpr const wchar_t* kClass = L"SivrayTrial";
constexpr int kWidth = 1536;
constexpr int kHeight = 936;
constexpr unsigned int kAfterEvent = 40;  ///< Milliseconds for an event to be dispatched.
constexpr double kFullScale = 65535.0;    ///< The range of mouse positions on the screen.

int characters = 0;

LRESULT CALLBACK handleMessage(HWND window, UINT message, WPARAM wide, LPARAM other) {
  characters += message == WM_CHAR ? 1 : 0;
  return DefWindowProcW(window, message, wide, other);
}

void sendMouse(DWORD flags, int x = 0, int y = 0) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dx = static_cast<LONG>(x * kFullScale / (GetSystemMetrics(SM_CXSCREEN) - 1) + 0.5);
  input.mi.dy = static_cast<LONG>(y * kFullScale / (GetSystemMetrics(SM_CYSCREEN) - 1) + 0.5);
  input.mi.dwFlags = flags;
  SendInput(1, &input, sizeof(input));
  TrialWindow::pump(kAfterEvent);
}

}  // namespace

TrialWindow::TrialWindow() {
  WNDCLASSW description{};
  description.lpfnWndProc = &handleMessage;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = kClass;
  RegisterClassW(&description);
  window = CreateWindowExW(0, kClass, L"Sivray", WS_POPUP | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, kWidth, kHeight,
                           nullptr, nullptr, description.hInstance, nullptr);
  SetForegroundWindow(window);
  SetFocus(window);
}

TrialWindow::~TrialWindow() { destroy(); }

void TrialWindow::destroy() {
  if (window != nullptr) {
    DestroyWindow(std::exchange(window, nullptr));
  }
}

int TrialWindow::takeCharacters() { return std::exchange(characters, 0); }

void TrialWindow::pump(unsigned int milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
}

void TrialWindow::moveTo(int x, int y) { sendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, x, y); }
void TrialWindow::press() { sendMouse(MOUSEEVENTF_LEFTDOWN); }
void TrialWindow::release() { sendMouse(MOUSEEVENTF_LEFTUP); }

void TrialWindow::rightClick() {
  sendMouse(MOUSEEVENTF_RIGHTDOWN);
  sendMouse(MOUSEEVENTF_RIGHTUP);
}

void TrialWindow::strike(unsigned short key) {
  for (const DWORD flags : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof(input));
    pump(kAfterEvent);
  }
}

}  // namespace sivray::trial

#endif
