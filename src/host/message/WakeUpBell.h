// The one call of the system by which the audio thread wakes the message thread, and the timer of the rests between.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// One source per system.
class WakeUpBell {
 public:
  using Call = std::function<void()>;

  /// Shorter than a screen shows a picture, and longer than most blocks: the audio thread need not ring in each.
  static constexpr std::chrono::milliseconds kRest{8};

  /// Throws std::system_error if the system has nothing to wake by. Any thread.
  WakeUpBell();
  ~WakeUpBell();
  WakeUpBell(const WakeUpBell&) = delete;
  WakeUpBell& operator=(const WakeUpBell&) = delete;

  /// From now on the message thread calls `rung` after each ring, and `rested` at the end of each rest. Earlier rings
  /// may be lost. Message thread.
  void start(Call rung, Call rested);

  /// Ends what `start` began; a call that is under way ends in its own time. Message thread, or another one while JUCE
  /// keeps running.
  void stop();

  /// Any thread, the audio thread too: makes one call of the system, which does not wait. False if the system does not
  /// take it, as when the message thread's queue is full; true where it is lost because nobody listens yet.
  bool ring() SIVRAY_NONBLOCKING;

  /// Begins a rest of kRest. Message thread. False if the system gives no timer: the rest then never ends.
  bool startRest();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
