// The lock guard of the audio thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"

namespace tesh::cofu::core {

/// Locks a mutex when it is made and unlocks it when it is destroyed. Only these two calls are exempt from the audio
/// thread's check; code that runs in between is not.
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
