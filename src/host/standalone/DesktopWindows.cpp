// The program on Windows.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include <algorithm>

#include <juce_events/juce_events.h>

#include "host/standalone/Desktop.h"
#include "platform/WindowsApi.h"

namespace tesh::bramel::standalone::desktop {
namespace {

constexpr float kPlainDots = 96.0F;  ///< An inch, where the desktop does not scale.
constexpr float kLargestScale = 4.0F;

}  // namespace

void prepare() { SetProcessDPIAware(); }  // The panel is drawn sharp, not enlarged by the system.

bool hasScreen() { return true; }

const char* screenAdvice() { return "there is no screen"; }

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

// Windows ends a program by a message to its window, which JUCE takes for a click on its close button.
struct EndRequests::Impl {};

EndRequests::EndRequests(std::function<void()> /*onRequest*/) {}

EndRequests::~EndRequests() = default;

}  // namespace tesh::bramel::standalone::desktop

#endif
