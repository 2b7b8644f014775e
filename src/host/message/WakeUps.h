// Turns many wake-ups of the message thread, from the audio thread, into few calls of the listeners.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/RealTime.h"
#include "host/message/WakeUpBell.h"

namespace tesh::bramel::vst {

/// Called on the message thread after a wake-up.
class WakeUpListener {
 public:
  virtual ~WakeUpListener() = default;

  /// Message thread. One call for any number of wake-ups since the last one, also those that were meant for other
  /// listeners.
  virtual void wokenUp() = 0;
};

/// Owned by shared pointers, so that a call of the bell on the message thread can keep it alive.
class WakeUps : public std::enable_shared_from_this<WakeUps> {
 public:
  /// Wake-ups that came before it are handled now. May follow a `stop`. Message thread.
  void start();

  /// No listener is called afterwards. Message thread; another thread only while JUCE keeps running.
  void stop() { bell.stop(); }

  /// The listener is held weakly. Message thread.
  void addListener(std::weak_ptr<WakeUpListener> listener) { listeners.push_back(std::move(listener)); }

  /// Wakes all listeners: at once if they are idle, at the end of each rest while wake-ups keep coming. Any thread, the
  /// audio thread too: allocates nothing, takes no lock, and makes a system call only for the first wake-up of a
  /// series.
  void wake() SIVRAY_NONBLOCKING;

 private:
  enum class State : std::uint8_t {
    idle,     ///< The next wake-up rings the bell.
    resting,  ///< The listeners have just been called.
    wanted    ///< The listeners are called at the end of the rest, or as soon as the thread wakes.
  };

  void ring() SIVRAY_NONBLOCKING;
  void endRest();
  void tellAndRest();

  WakeUpBell bell;
  std::atomic<State> state = State::idle;
  std::vector<std::weak_ptr<WakeUpListener>> listeners;  ///< Message thread only.
};

}  // namespace tesh::bramel::vst
