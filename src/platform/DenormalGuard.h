// Flushes denormal numbers to zero within a scope, and restores the caller's setting at its end.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace tesh::bramel::platform {

/// For the audio thread: sets flush-to-zero and denormals-are-zero, and restores the control register at its end.
class DenormalGuard {
 public:
  DenormalGuard(const DenormalGuard&) = delete;
  DenormalGuard& operator=(const DenormalGuard&) = delete;
#if defined(__x86_64__) || defined(__i386__)
  DenormalGuard() : saved(_mm_getcsr()) { _mm_setcsr(saved | kFlushBits); }
  ~DenormalGuard() { _mm_setcsr(saved); }

 private:
  static constexpr unsigned kFlushBits = 0x8040;
  unsigned saved;
#else
  DenormalGuard() = default;
  ~DenormalGuard() = default;
#endif
};

}  // namespace tesh::bramel::platform
