// A lock that the audio thread may take.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"

namespace tesh::cofu::core {

/// Holds a mutex for as long as it lives. Taking it and giving it back are exempt from the audio thread's rule; what
/// happens in between is not.
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
