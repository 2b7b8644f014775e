// Wake-ups of the message thread: many of them, from the audio thread, become a few calls of the listeners.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/RealTime.h"
#include "host/message/WakeUpBell.h"

namespace tesh::bramel::vst {

/// Has something to do when the message thread was woken.
class WakeUpListener {
 public:
  virtual ~WakeUpListener() = default;

  /// Message thread, once for any number of wake-ups that came in between. Others' wake-ups count too.
  virtual void wokenUp() = 0;
};

/// Held by shared pointers: a call of the bell that is under way on the message thread keeps it alive.
class WakeUps : public std::enable_shared_from_this<WakeUps> {
 public:
  /// Message thread. Wake-ups before it wait for it. May follow a `stop`.
  void start();

  /// Listeners hear nothing afterwards. Message thread; another one only where JUCE keeps running.
  void stop() { bell.stop(); }

  /// The listener is held weakly. Message thread.
  void addListener(std::weak_ptr<WakeUpListener> listener) { listeners.push_back(std::move(listener)); }

  /// Wakes all listeners: at once when they are at rest, and at the end of each rest while wake-ups keep coming. Any
  /// thread, the audio thread too: takes no memory and no lock, and calls the system only for the first of a row.
  void wake() SIVRAY_NONBLOCKING;

 private:
  enum class State : std::uint8_t {
    idle,     ///< A wake-up has to ring the bell.
    resting,  ///< The listeners have just looked.
    wanted    ///< They look at the end of the rest, or as soon as the thread is awake.
  };

  void ring() SIVRAY_NONBLOCKING;
  void endRest();
  void tellAndRest();

  WakeUpBell bell;
  std::atomic<State> state = State::idle;
  std::vector<std::weak_ptr<WakeUpListener>> listeners;  ///< The message thread's.
};

}  // namespace tesh::bramel::vst
