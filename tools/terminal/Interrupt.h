// Ends long work on an interrupt, a hang-up or a request to terminate, so that its temporary files go.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <csignal>

namespace sivray {

/// Thrown by `InterruptWatch::check` after a signal.
struct Interrupted {
  int signal = 0;
};

/// While it exists these signals are noted instead of ending the program. One that the program was started to
/// ignore stays ignored. One at a time, on the main thread.
class InterruptWatch {
 public:
  InterruptWatch();
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  /// Throws Interrupted if one came. Does nothing without a watch.
  static void check();

  /// Whether one came; for other threads, which must not throw. False without a watch.
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
