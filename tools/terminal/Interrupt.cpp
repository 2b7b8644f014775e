// The handler only stores the signal.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "terminal/Interrupt.h"

namespace sivray {
namespace {

volatile std::sig_atomic_t arrived = 0;

void note(int signal) { arrived = signal; }

}  // namespace

#ifdef _WIN32

InterruptWatch::InterruptWatch() {
  arrived = 0;
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    before[i] = std::signal(kSignals[i], note);
  }
}

InterruptWatch::~InterruptWatch() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    std::signal(kSignals[i], before[i]);
  }
}

#else

InterruptWatch::InterruptWatch() {
  arrived = 0;
  struct sigaction noting {};
  noting.sa_handler = note;
  noting.sa_flags = SA_RESTART;
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &before[i]);
    if (before[i].sa_handler != SIG_IGN) {
      sigaction(kSignals[i], &noting, nullptr);
    }
  }
}

InterruptWatch::~InterruptWatch() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &before[i], nullptr);
  }
}

#endif

bool InterruptWatch::hasArrived() { return arrived != 0; }

void InterruptWatch::check() {
  if (hasArrived()) {
    throw Interrupted{arrived};
  }
}

}  // namespace sivray
