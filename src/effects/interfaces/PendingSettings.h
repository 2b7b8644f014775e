// The hand-over of a set of settings from the thread that turns a knob to the audio thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <mutex>

#include "core/RealTimeLock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Sample indices in a block at which pending settings are taken: multiples of this.
inline constexpr unsigned kControlGrid = 64;

/// A pending set under a mutex that is held for the copy alone, and the flag that tells the audio thread to look.
template <typename Settings>
class PendingSettings {
 public:
  PendingSettings() = default;

  /// Starts with `initial` pending; it is taken at the first look when `raised` is set.
  explicit PendingSettings(const Settings& initial, bool raised = false) : pending(initial), dirty(raised) {}

  /// Puts a complete set in place. Any thread.
  void post(const Settings& settings) {
    const cofu::core::RealTimeLock lock(mutex);
    put(settings);
  }

  /// Puts in place what `make` makes of values that several threads change, each before it calls this. If another
  /// thread's set came meanwhile, `make` runs again: it may not have seen what that thread changed. Any thread.
  template <typename Make>
  void postMade(Make make) {
    for (;;) {
      const unsigned before = posts.load(std::memory_order_acquire);
      const Settings made = make();
      const cofu::core::RealTimeLock lock(mutex);
      if (posts.load(std::memory_order_relaxed) == before) {
        return put(made);
      }
    }
  }

  /// Copies the pending set to `live` if one has come. Returns true when it did. Audio thread.
  bool takeInto(Settings& live) SIVRAY_NONBLOCKING {
    if (!dirty.load(std::memory_order_acquire)) {
      return false;
    }
    const cofu::core::RealTimeLock lock(mutex);
    live = pending;
    dirty.store(false, std::memory_order_relaxed);
    return true;
  }

  /// Whether a set waits to be taken. Any thread.
  bool waits() const SIVRAY_NONBLOCKING { return dirty.load(std::memory_order_acquire); }

  /// A copy of the pending set. Any thread.
  Settings peek() const {
    const cofu::core::RealTimeLock lock(mutex);
    return pending;
  }

 private:
  /// Must be called with `mutex` held.
  void put(const Settings& settings) {
    pending = settings;
    posts.store(posts.load(std::memory_order_relaxed) + 1, std::memory_order_release);
    dirty.store(true, std::memory_order_release);
  }

  mutable std::mutex mutex;
  Settings pending{};
  std::atomic<unsigned> posts{0};  ///< Sets that were put in place; wraps.
  std::atomic<bool> dirty{false};
};

}  // namespace tesh::bramel::plugin::sivray::effects
