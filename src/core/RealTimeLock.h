// A lock guard for the audio thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"

namespace tesh::cofu::core {

/// Locks a mutex from construction to destruction. Only the locking and unlocking are exempt from the audio thread's
/// check, not the code in between.
template <typename Mutex>
class RealTimeLock {
 public:
  explicit RealTimeLock(Mutex& lockedMutex) SIVRAY_NONBLOCKING : mutex(lockedMutex) {
    mayWait([this] { mutex.lock(); });
  }
  ~RealTimeLock() SIVRAY_NONBLOCKING {
    mayWait([this] { mutex.unlock(); });
  }
  RealTimeLock(const RealTimeLock&) = delete;
  RealTimeLock& operator=(const RealTimeLock&) = delete;

 private:
  Mutex& mutex;
};

}  // namespace tesh::cofu::core
