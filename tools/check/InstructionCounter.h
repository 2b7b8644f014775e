// Counts the instructions of a library's work, which unlike times are the same on every run.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "check/ModuleRange.h"

namespace sivray::check {

struct InstructionCounts {
  /// Of the library, and of the system's libraries where it has called them.
  std::int64_t library = 0;
  std::int64_t program = 0;  ///< Of this program, likewise: the host.
};

/// Counts the calling thread's instructions while it exists: the processor stops after each one, which takes from 1 to
/// 20 us. What CallCounter puts before the system's functions is left out. One at a time in a process.
class InstructionCounter {
 public:
  /// `ownCounts` is increased, and must outlive the counter.
  InstructionCounter(InstructionCounts& ownCounts, const ModuleRange& library);
  ~InstructionCounter();
  InstructionCounter(const InstructionCounter&) = delete;
  InstructionCounter& operator=(const InstructionCounter&) = delete;

  /// Returns false under a sanitizer and on systems other than Linux on x86-64, where nothing is counted.
  static bool works();

 private:
  [[maybe_unused]] InstructionCounts& counts;  ///< Not used where nothing is counted.
};

}  // namespace sivray::check
