// Rings the bell for the first wake-up of a series, and calls the listeners again when a rest ends.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/message/WakeUps.h"

#include <cstddef>

namespace tesh::bramel::vst {

void WakeUps::start() {
  const std::weak_ptr<WakeUps> own = weak_from_this();
  bell.start(
      [own] {
        if (const auto held = own.lock()) {
          held->tellAndRest();
        }
      },
      [own] {
        if (const auto held = own.lock()) {
          held->endRest();
        }
      });
  if (state != State::idle) {  // A wake-up came before the start, or `stop` came during a rest.
    ring();
  }
}

void WakeUps::wake() {
  if (state.exchange(State::wanted) == State::idle) {
    ring();
  }
}

void WakeUps::ring() {
  if (!bell.ring()) {
    state = State::idle;  // The next wake-up tries again.
  }
}

void WakeUps::endRest() {
  State resting = State::resting;
  if (!state.compare_exchange_strong(resting, State::idle)) {
    tellAndRest();
  }
}

void WakeUps::tellAndRest() {
  state = State::resting;  // Set before the listeners look, so that a change after their look wakes them again.
  const bool willRestEnd = bell.startRest();
  std::erase_if(listeners, [](const auto& held) { return held.expired(); });
  for (std::size_t i = 0; i < listeners.size(); ++i) {
    if (const auto listener = listeners[i].lock()) {
      listener->wokenUp();
    }
  }
  State resting = State::resting;
  if (!willRestEnd && !state.compare_exchange_strong(resting, State::idle)) {
    ring();
  }
}

}  // namespace tesh::bramel::vst
