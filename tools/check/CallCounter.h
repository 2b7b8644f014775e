// Counts what the audio thread must not do: this program's own malloc, free, open, read and lock stand before the
// system's, for the plug-in's library too.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace sivray::check {

struct CallCounts {
  std::int64_t allocations = 0;
  std::int64_t frees = 0;
  std::int64_t files = 0;  ///< Opened or read.
  std::int64_t locks = 0;  ///< Mutexes taken.
  std::int64_t waits = 0;  ///< Locks that another thread held, and sleeps.
};

/// Counts the calls of its thread for as long as it lives. One at a time on a thread.
class CallCounter {
 public:
  /// Adds to `counts`.
  explicit CallCounter(CallCounts& counts);
  ~CallCounter();
  CallCounter(const CallCounter&) = delete;
  CallCounter& operator=(const CallCounter&) = delete;

  /// False where a sanitizer or another system keeps these functions for itself.
  static bool works();
};

}  // namespace sivray::check
