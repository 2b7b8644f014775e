// A lock that the audio thread may take.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"

// The compiler cannot see that waiting is allowed here.
#if defined(__clang__) && defined(__has_warning)
#if __has_warning("-Wfunction-effects")
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wfunction-effects"
#define SIVRAY_EFFECTS_PUSHED
#endif
#endif

namespace tesh::cofu::core {

/// Holds a mutex for as long as it lives. Taking it and giving it back are exempt from the audio thread's rule; what
/// happens in between is not.
template <typename Mutex>
class RealTimeLock {
 public:
  explicit RealTimeLock(Mutex& lockedMutex) SIVRAY_NONBLOCKING : mutex(lockedMutex) {
    const MayWait wait;
    mutex.lock();
  }
  ~RealTimeLock() SIVRAY_NONBLOCKING {
    const MayWait wait;
    mutex.unlock();
  }
  RealTimeLock(const RealTimeLock&) = delete;
  RealTimeLock& operator=(const RealTimeLock&) = delete;

 private:
  Mutex& mutex;
};

}  // namespace tesh::cofu::core

#if defined(SIVRAY_EFFECTS_PUSHED)
#pragma clang diagnostic pop
#undef SIVRAY_EFFECTS_PUSHED
#endif
