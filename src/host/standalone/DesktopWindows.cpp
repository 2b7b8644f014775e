// The program on Windows.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include <algorithm>
#include <cstring>
#include <utility>

#include <juce_events/juce_events.h>

#include "host/editor/WindowScale.h"
#include "host/standalone/Desktop.h"
#include "platform/WideText.h"
#include "platform/WindowsApi.h"

namespace tesh::bramel::standalone::desktop {
namespace {

constexpr float kPlainDots = 96.0F;  ///< Dots an inch where the desktop does not scale.
constexpr float kLargestScale = 4.0F;

float clampedScale(float scale) { return std::clamp(scale, 1.0F, kLargestScale); }

void writeTo(HANDLE file, const char* text) {
  DWORD written = 0;
  WriteFile(file, text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
}

}  // namespace

void prepare() {}

bool hasScreen() { return true; }

const char* screenAdvice() { return "there is no screen"; }

float scale() {
  HDC screen = GetDC(nullptr);
  const auto dots = static_cast<float>(GetDeviceCaps(screen, LOGPIXELSX));
  ReleaseDC(nullptr, screen);
  return clampedScale(dots / kPlainDots);
}

void runMessages() { juce::MessageManager::getInstance()->runDispatchLoop(); }

void nameWindow(void* /*nativeWindow*/) {}  // Windows takes the name from the program's file.

// By its manifest, the program itself draws at each screen's scale. JUCE does not know about that manifest: it takes
// all coordinates as screen pixels and ignores these messages.
struct WindowScale::Impl {
  Impl(HWND scaledWindow, std::function<void(float)> onScale)
      : tell(std::move(onScale)),
        window(scaledWindow),
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the system hands out its procedures as numbers.
        before(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC))) {
    SetPropW(window, kProperty, this);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&handleMessage));
  }
  ~Impl() {
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before));
    RemovePropW(window, kProperty);
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  static LRESULT CALLBACK handleMessage(HWND window, UINT message, WPARAM wide, LPARAM other) {
    const auto* const own = static_cast<const Impl*>(GetPropW(window, kProperty));
    if (message != WM_DPICHANGED) {
      return CallWindowProcW(own->before, window, message, wide, other);
    }
    // At the suggested place most of the window is on the new screen. NOLINTNEXTLINE(performance-no-int-to-ptr)
    if (const auto* const place = reinterpret_cast<const RECT*>(other)) {
      SetWindowPos(window, nullptr, place->left, place->top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    own->tell(clampedScale(static_cast<float>(HIWORD(wide)) / kPlainDots));
    return 0;
  }

  static constexpr const wchar_t* kProperty = L"SivrayScale";
  const std::function<void(float)> tell;
  HWND window;
  const WNDPROC before;
};

WindowScale::WindowScale(void* nativeWindow, const std::function<void(float)>& tell)
    : impl(std::make_unique<Impl>(static_cast<HWND>(nativeWindow), tell)) {
  impl->tell(clampedScale(vst::scaleOfWindow(nativeWindow)));
}

WindowScale::~WindowScale() = default;

bool hasTerminal() { return false; }  // A program with windows has no console.

void say(const char* text, std::FILE* stream) {
  // Prefers a file or pipe that the starting process gave, else the console in which the command was typed.
  HANDLE given = GetStdHandle(stream == stdout ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
  if (given != nullptr && given != INVALID_HANDLE_VALUE && GetFileType(given) != FILE_TYPE_UNKNOWN) {
    writeTo(given, text);
    return;
  }
  if (AttachConsole(ATTACH_PARENT_PROCESS) != FALSE) {
    HANDLE console = CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (console != INVALID_HANDLE_VALUE) {
      writeTo(console, "\r\n");  // The prompt has already been printed again.
      writeTo(console, text);
      CloseHandle(console);
      return;
    }
  }
  MessageBoxW(nullptr, platform::toWide(text).c_str(), L"Sivray", MB_OK);
}

// A hidden top-level window, which Windows asks whether the session may end and tells when it ends. It has the class of
// static texts, because a class of our own would take more code. A message-only window would not be asked.
struct EndRequests::Impl {
  Impl(std::function<void()> onQuestion, std::function<void()> onEnd)
      : save(std::move(onQuestion)),
        end(std::move(onEnd)),
        window(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr,
                               nullptr)) {
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&handleMessage));
  }
  ~Impl() { DestroyWindow(window); }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  static LRESULT CALLBACK handleMessage(HWND window, UINT message, WPARAM wide, LPARAM other) {
    // Windows keeps the pointer as a number. NOLINTNEXTLINE(performance-no-int-to-ptr)
    const auto* const own = reinterpret_cast<const Impl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_QUERYENDSESSION) {
      own->save();
      return TRUE;
    }
    if (message == WM_ENDSESSION && wide != FALSE) {
      own->save();  // The user may have played on since the question.
      own->end();
      return 0;
    }
    return DefWindowProcW(window, message, wide, other);
  }

  const std::function<void()> save;
  const std::function<void()> end;
  HWND window;
};

EndRequests::EndRequests(std::function<void()> save, std::function<void()> end)
    : impl(std::make_unique<Impl>(std::move(save), std::move(end))) {}

EndRequests::~EndRequests() = default;

}  // namespace tesh::bramel::standalone::desktop

#endif
