// The shell's main lock. Functions that must run while it is held take a MainLock as proof.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#ifndef NDEBUG
#include <atomic>
#include <thread>
#endif

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Recursive: a host may call back while a block sends it MIDI.
class MainMutex {
 public:
  void lock() {
    mutex.lock();
#ifndef NDEBUG
    ++depth;
    holder = std::this_thread::get_id();
#endif
  }

  void unlock() {
#ifndef NDEBUG
    if (--depth == 0) {
      holder = std::thread::id();
    }
#endif
    mutex.unlock();
  }

#ifndef NDEBUG
  bool isHeldHere() const { return holder == std::this_thread::get_id(); }
#endif

 private:
  std::recursive_mutex mutex;
#ifndef NDEBUG
  int depth = 0;
  std::atomic<std::thread::id> holder;
#endif
};

/// Holds the main lock for as long as it lives, or until `unlock`. Any thread; the audio thread waits for it too.
class MainLock {
 public:
  explicit MainLock(MainMutex& mainMutex) SIVRAY_NONBLOCKING : mutex(&mainMutex) {
    cofu::core::mayWait([this] { mutex->lock(); });
  }
  ~MainLock() SIVRAY_NONBLOCKING { unlock(); }
  MainLock(const MainLock&) = delete;
  MainLock& operator=(const MainLock&) = delete;

  /// Afterwards this object no longer proves that the lock is held.
  void unlock() SIVRAY_NONBLOCKING {
    if (mutex != nullptr) {
      cofu::core::mayWait([this] { mutex->unlock(); });
      mutex = nullptr;
    }
  }

 private:
  MainMutex* mutex;
};

}  // namespace tesh::bramel::vst
