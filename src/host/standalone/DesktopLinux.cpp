// The program on X11 desktops.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <dlfcn.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <utility>

#include "host/message/JuceX11.h"
#include "host/message/X11Connection.h"
#include "host/standalone/Desktop.h"

namespace tesh::bramel::standalone::desktop {
namespace {

constexpr float kPlainDots = 96.0F;  ///< Dots an inch where the desktop does not scale.
constexpr float kLargestScale = 4.0F;

/// libjack prints a message to the standard error each time that no server runs; the program shows this in its window
/// instead. PipeWire's libjack offers no function to turn it off, only this variable, which the user may have set.
void silenceJack() {
  ::setenv("PIPEWIRE_DEBUG", "0", 0);
  using Say = void (*)(const char*);
  using SetSay = void (*)(Say);
  void* const library = ::dlopen("libjack.so.0", RTLD_LAZY);
  if (library == nullptr) {
    return;
  }
  for (const char* const name : {"jack_set_error_function", "jack_set_info_function"}) {
    if (const auto set = reinterpret_cast<SetSay>(::dlsym(library, name))) {
      set([](const char*) {});
    }
  }
}

/// The desktop's dots an inch in the X server's resources; 0 if none are set.
float desktopDots() {
  Display* const display = juce::XWindowSystem::getInstance()->getDisplay();
  const char* const text = display == nullptr ? nullptr : XResourceManagerString(display);
  std::istringstream resources(text == nullptr ? "" : text);
  const std::string key = "Xft.dpi:";
  for (std::string line; std::getline(resources, line);) {
    if (line.starts_with(key)) {
      return std::strtof(line.c_str() + key.size(), nullptr);
    }
  }
  return 0.0F;
}

/// Descriptor that the signal handler writes to; -1 while nobody listens.
volatile std::sig_atomic_t endFile = -1;

void askToEnd(int /*signal*/) {
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t bytes = ::write(endFile, &one, sizeof(one));
}

}  // namespace

void prepare() {
  silenceJack();
  vst::internWindowManagerAtoms();
}

bool hasScreen() { return vst::openConnection(); }

const char* screenAdvice() { return "there is no screen: DISPLAY names no X server that answers"; }

float scale() {
  const float dots = desktopDots();
  return dots > 0.0F && std::isfinite(dots) ? std::clamp(dots / kPlainDots, 1.0F, kLargestScale) : 1.0F;
}

void runMessages() {
  while (!juce::MessageManager::getInstance()->hasStopMessageBeenSent()) {
    vst::serveMessages();
  }
}

void nameWindow(void* nativeWindow) {
  Display* const display = juce::XWindowSystem::getInstance()->getDisplay();
  std::string instance = "sivray";
  std::string name = "Sivray";
  XClassHint hint{instance.data(), name.data()};
  XSetClassHint(display, reinterpret_cast<Window>(nativeWindow), &hint);
}

struct WindowScale::Impl {};

WindowScale::WindowScale(void* /*nativeWindow*/, const std::function<void(float)>& /*tell*/) {}

WindowScale::~WindowScale() = default;

bool hasTerminal() { return ::isatty(STDERR_FILENO) == 1; }

void say(const char* text, std::FILE* stream) { std::fputs(text, stream); }

struct EndRequests::Impl {
  std::function<void()> save;
  std::function<void()> end;
};

EndRequests::EndRequests(std::function<void()> save, std::function<void()> end) : impl(std::make_unique<Impl>()) {
  impl->save = std::move(save);
  impl->end = std::move(end);
  const int file = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
  if (file < 0) {
    return;  // Signals then end the program in the default way.
  }
  juce::LinuxEventLoop::registerFdCallback(file, [this](int readable) {
    std::uint64_t count = 0;
    if (::read(readable, &count, sizeof(count)) > 0) {
      impl->save();
      impl->end();
    }
  });
  endFile = file;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    // A program started by nohup must survive a hang-up.
    if (std::signal(signal, askToEnd) == SIG_IGN) {
      std::signal(signal, SIG_IGN);
    }
  }
}

EndRequests::~EndRequests() {
  if (endFile < 0) {
    return;
  }
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    if (std::signal(signal, SIG_DFL) == SIG_IGN) {
      std::signal(signal, SIG_IGN);
    }
  }
  juce::LinuxEventLoop::unregisterFdCallback(endFile);
  ::close(endFile);
  endFile = -1;
}

}  // namespace tesh::bramel::standalone::desktop

#endif
