// The one system call by which the audio thread wakes the message thread, and the timer that limits how often.
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

  /// 8 ms: shorter than a frame of the screen, and longer than most blocks, so that the audio thread need not ring in
  /// every block.
  static constexpr std::chrono::milliseconds kRest{8};

  /// Throws std::system_error if the system provides no descriptor or window for it. Any thread.
  WakeUpBell();
  ~WakeUpBell();
  WakeUpBell(const WakeUpBell&) = delete;
  WakeUpBell& operator=(const WakeUpBell&) = delete;

  /// From now on the message thread calls `rung` after each ring, and `rested` when a rest ends. Rings before this call
  /// may be lost. Message thread.
  void start(Call rung, Call rested);

  /// No further calls begin; one that is running still finishes. Message thread, or another thread while JUCE keeps
  /// running.
  void stop();

  /// Makes one system call, which does not wait. False if the system refuses it, for example because the message
  /// thread's queue is full. True, although the ring is lost, if nobody listens yet. Any thread, the audio thread too.
  bool ring() SIVRAY_NONBLOCKING;

  /// Begins a rest of kRest. False if the system gives no timer: the rest then never ends. Message thread.
  bool startRest();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
