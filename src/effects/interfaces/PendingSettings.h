// Passes a set of settings from the thread that turns a knob to the audio thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <mutex>

#include "core/RealTimeLock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Pending settings are applied before samples whose index in the block is a multiple of this.
inline constexpr unsigned kControlGrid = 64;

/// A pending set under a mutex that is held only while copying, and a dirty flag for the audio thread.
template <typename Settings>
class PendingSettings {
 public:
  PendingSettings() = default;

  /// `initial` is pending at first; with `raised` it is taken by the first takeInto.
  explicit PendingSettings(const Settings& initial, bool raised = false) : pending(initial), dirty(raised) {}

  /// Replaces the pending set. Any thread.
  void post(const Settings& settings) {
    const cofu::core::RealTimeLock lock(mutex);
    put(settings);
  }

  /// Replaces the pending set by the result of `make`, which reads values that several threads change, each before it
  /// calls this. If another thread replaced the set meanwhile, `make` runs again, because it may have missed that
  /// thread's change. Any thread.
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

  /// Copies the pending set to `live` if there is a new one, and returns whether there was. Audio thread.
  bool takeInto(Settings& live) SIVRAY_NONBLOCKING {
    if (!dirty.load(std::memory_order_acquire)) {
      return false;
    }
    const cofu::core::RealTimeLock lock(mutex);
    live = pending;
    dirty.store(false, std::memory_order_relaxed);
    return true;
  }

  /// Whether a new set is pending. Any thread.
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
  std::atomic<unsigned> posts{0};  ///< Number of sets posted so far; wraps.
  std::atomic<bool> dirty{false};
};

}  // namespace tesh::bramel::plugin::sivray::effects
