// Counts calls that an audio thread must not make. This program replaces malloc, free, open, read, write and the
// mutex functions, also for the plug-in's library, by versions that count and then call the system's.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "check/ModuleRange.h"

namespace sivray::check {

struct CallCounts {
  std::int64_t allocations = 0;
  std::int64_t frees = 0;
  std::int64_t files = 0;  ///< Opened or read.
  std::int64_t writes = 0;
  std::int64_t locks = 0;  ///< Mutexes taken.
  std::int64_t waits = 0;  ///< Waits for a lock that another thread holds, and sleeps.

  CallCounts operator+(const CallCounts& other) const {
    return {allocations + other.allocations, frees + other.frees, files + other.files,
            writes + other.writes,           locks + other.locks, waits + other.waits};
  }
};

/// Counts the calling thread's calls while it exists. At most one at a time on a thread.
class CallCounter {
 public:
  /// `counts` is increased and must outlive the counter.
  explicit CallCounter(CallCounts& counts);
  ~CallCounter();
  CallCounter(const CallCounter&) = delete;
  CallCounter& operator=(const CallCounter&) = delete;

  /// The address range of this program's replacements of the system's functions; empty if there are none.
  static ModuleRange replacements();

  /// Returns false under a sanitizer and on systems other than Linux with glibc, where nothing is counted.
  static bool works();
};

/// While it exists, only calls from one library are counted, except for locks: neither the host's own calls, nor those
/// that the host makes when the library calls it back. Calls that the library makes through the system's libraries
/// count.
class CountedModule {
 public:
  /// `text` occurs in the library's path and in no other. The library must be loaded. One object at a time.
  explicit CountedModule(const std::string& text);
  ~CountedModule();
  CountedModule(const CountedModule&) = delete;
  CountedModule& operator=(const CountedModule&) = delete;
};

}  // namespace sivray::check
