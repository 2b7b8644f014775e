// The bell on Windows: a window that is never shown, with messages for rings and a timer for rests.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include <atomic>
#include <utility>

#include "core/RealTime.h"
#include "host/message/HiddenWindow.h"
#include "host/message/WakeUpBell.h"

namespace tesh::bramel::vst {
namespace {

constexpr UINT kRing = WM_APP;
constexpr UINT_PTR kRestTimer = 1;

}  // namespace

struct WakeUpBell::Impl {
  std::unique_ptr<HiddenWindow> window;    ///< Message thread only.
  std::atomic<HWND> ringTarget = nullptr;  ///< The window's handle; null while nobody listens.
};

WakeUpBell::WakeUpBell() : impl(std::make_unique<Impl>()) {}

WakeUpBell::~WakeUpBell() = default;

void WakeUpBell::start(Call rung, Call rested) {
  impl->window = std::make_unique<HiddenWindow>(
      [own = std::move(rung), ownRested = std::move(rested)](HWND window, UINT message, WPARAM timer) {
        if (message == kRing) {
          own();
        } else if (message == WM_TIMER && timer == kRestTimer) {
          KillTimer(window, kRestTimer);  // A timer of Windows would fire again and again.
          ownRested();
        }
      });
  impl->ringTarget = impl->window->handle();
}

void WakeUpBell::stop() {
  impl->ringTarget = nullptr;
  impl->window.reset();
}

bool WakeUpBell::ring() {
  return cofu::core::mayWait([this] {  // PostMessage does not wait.
    HWND target = impl->ringTarget;
    return target == nullptr || PostMessageW(target, kRing, 0, 0) != FALSE;
  });
}

bool WakeUpBell::startRest() {
  HWND target = impl->ringTarget;
  return target != nullptr && SetTimer(target, kRestTimer, static_cast<UINT>(kRest.count()), nullptr) != 0;
}

}  // namespace tesh::bramel::vst

#endif
