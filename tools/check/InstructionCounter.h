// Counts the instructions that a library executes, which, unlike times, are the same in every run.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "check/ModuleRange.h"

namespace sivray::check {

struct InstructionCounts {
  /// Of the library, and of the system's libraries on its behalf.
  std::int64_t library = 0;
  std::int64_t program = 0;  ///< Of this program, the host, in the same way.
};

/// Counts the calling thread's instructions while it exists: the processor traps after each one, which takes 1 to 20
/// us. CallCounter's replacements of the system's functions are not counted. One object per process at a time.
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
