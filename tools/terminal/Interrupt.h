// Lets long work end cleanly after SIGINT, SIGHUP or SIGTERM, so that its temporary files are removed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <csignal>

namespace sivray {

/// Thrown by `InterruptWatch::check` after a signal.
struct Interrupted {
  int signal = 0;
};

/// While one exists, these signals are stored instead of ending the program. Signals that were ignored at the program's
/// start stay ignored. Only one may exist, on the main thread.
class InterruptWatch {
 public:
  InterruptWatch();
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  /// Throws Interrupted if a signal has arrived. Does nothing without a watch.
  static void check();

  /// Whether a signal has arrived; for other threads, which must not throw. False without a watch.
  static bool hasArrived();

 private:
#ifdef _WIN32
  using Handling = void (*)(int);
  static constexpr std::array kSignals{SIGINT, SIGTERM};
#else
  using Handling = struct sigaction;
  static constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};
#endif
  std::array<Handling, kSignals.size()> before{};
};

}  // namespace sivray
