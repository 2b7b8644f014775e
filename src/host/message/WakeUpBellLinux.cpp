// The bell on Linux: an eventfd for rings and a timerfd for rests. JUCE's message loop waits for both.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/message/WakeUpBell.h"

namespace tesh::bramel::vst {
namespace {

/// Makes the message loop call `call` each time that the descriptor's counter rises.
void listenTo(int file, WakeUpBell::Call call) {
  juce::LinuxEventLoop::registerFdCallback(file, [own = std::move(call)](int counted) {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t bytes = ::read(counted, &count, sizeof(count));
    own();
  });
}

}  // namespace

struct WakeUpBell::Impl {
  /// A file descriptor that this object closes.
  class OwnedFile {
   public:
    /// Throws std::system_error with errno's text if `file` is negative.
    explicit OwnedFile(int file) : number(file) {
      if (number < 0) {
        throw std::system_error(errno, std::generic_category());
      }
    }
    ~OwnedFile() { ::close(number); }
    OwnedFile(const OwnedFile&) = delete;
    OwnedFile& operator=(const OwnedFile&) = delete;
    operator int() const { return number; }

   private:
    const int number;
  };

  const OwnedFile rings{::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)};
  const OwnedFile rests{::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)};
};

WakeUpBell::WakeUpBell() : impl(std::make_unique<Impl>()) {}

WakeUpBell::~WakeUpBell() = default;

void WakeUpBell::start(Call rung, Call rested) {
  listenTo(impl->rings, std::move(rung));
  listenTo(impl->rests, std::move(rested));
}

void WakeUpBell::stop() {
  juce::LinuxEventLoop::unregisterFdCallback(impl->rests);
  juce::LinuxEventLoop::unregisterFdCallback(impl->rings);
}

bool WakeUpBell::ring() {
  return cofu::core::mayWait([this] {  // A write to an eventfd does not wait.
    const std::uint64_t one = 1;
    return ::write(impl->rings, &one, sizeof(one)) == sizeof(one);
  });
}

bool WakeUpBell::startRest() {
  const itimerspec rest{{0, 0}, {0, std::chrono::nanoseconds(kRest).count()}};
  return ::timerfd_settime(impl->rests, 0, &rest, nullptr) == 0;
}

}  // namespace tesh::bramel::vst

#endif
