// The program on Windows.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include <algorithm>
#include <cstring>
#include <utility>

#include <juce_events/juce_events.h>

#include "host/standalone/Desktop.h"
#include "platform/WideText.h"
#include "platform/WindowsApi.h"

namespace tesh::bramel::standalone::desktop {
namespace {

constexpr float kPlainDots = 96.0F;  ///< An inch, where the desktop does not scale.
constexpr float kLargestScale = 4.0F;

void writeTo(HANDLE file, const char* text) {
  DWORD written = 0;
  WriteFile(file, text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
}

}  // namespace

void prepare() {}

bool hasScreen() { return true; }

const char* screenAdvice() { return "there is no screen"; }

// Of the main screen: by its manifest the program draws for that, and Windows stretches it on others.
float scale() {
  HDC screen = GetDC(nullptr);
  const auto dots = static_cast<float>(GetDeviceCaps(screen, LOGPIXELSX));
  ReleaseDC(nullptr, screen);
  return std::clamp(dots / kPlainDots, 1.0F, kLargestScale);
}

void runMessages() { juce::MessageManager::getInstance()->runDispatchLoop(); }

void nameWindow(void* /*nativeWindow*/) {}  // Windows goes by the program's file.

juce::File settingsFolder() {
  return juce::File::getSpecialLocation(juce::File::userApplicationDataDirectory).getChildFile("Sivray");
}

bool hasTerminal() { return false; }  // A program with windows has no console.

void say(const char* text, std::FILE* stream) {
  // A file or a pipe that the starter gave, else the console in which the command was typed.
  HANDLE given = GetStdHandle(stream == stdout ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
  if (given != nullptr && given != INVALID_HANDLE_VALUE && GetFileType(given) != FILE_TYPE_UNKNOWN) {
    writeTo(given, text);
    return;
  }
  if (AttachConsole(ATTACH_PARENT_PROCESS) != FALSE) {
    HANDLE console = CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (console != INVALID_HANDLE_VALUE) {
      writeTo(console, "\r\n");  // The prompt has come back already.
      writeTo(console, text);
      CloseHandle(console);
      return;
    }
  }
  MessageBoxW(nullptr, platform::toWide(text).c_str(), L"Sivray", MB_OK);
}

// A hidden window of the desktop, to which Windows says that the session ends. It has the class of a text: a class of
// our own needs more. A window of messages alone would not be told.
struct EndRequests::Impl {
  explicit Impl(std::function<void()> onRequest)
      : tell(std::move(onRequest)),
        window(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr,
                               nullptr)) {
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&handleMessage));
  }
  ~Impl() { DestroyWindow(window); }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  static LRESULT CALLBACK handleMessage(HWND window, UINT message, WPARAM wide, LPARAM other) {
    if (message == WM_ENDSESSION && wide != FALSE) {
      // Windows keeps the pointer as a number. NOLINTNEXTLINE(performance-no-int-to-ptr)
      reinterpret_cast<const Impl*>(GetWindowLongPtrW(window, GWLP_USERDATA))->tell();
      return 0;
    }
    return DefWindowProcW(window, message, wide, other);  // Which agrees to the end when it is asked.
  }

  const std::function<void()> tell;
  HWND window;
};

EndRequests::EndRequests(std::function<void()> onRequest) : impl(std::make_unique<Impl>(std::move(onRequest))) {}

EndRequests::~EndRequests() = default;

}  // namespace tesh::bramel::standalone::desktop

#endif
