// Flushes denormal numbers to zero within a scope, and restores the caller's setting at its end.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace tesh::bramel::platform {

/// Changes the calling thread's control register, so it must be destroyed on the thread that made it. Audio thread.
/// Does nothing on other processors than x86.
class DenormalGuard {
 public:
  DenormalGuard(const DenormalGuard&) = delete;
  DenormalGuard& operator=(const DenormalGuard&) = delete;
#if defined(__x86_64__) || defined(__i386__)
  DenormalGuard() : saved(_mm_getcsr()) { _mm_setcsr(saved | kFlushBits); }
  ~DenormalGuard() { _mm_setcsr(saved); }

 private:
  static constexpr unsigned kFlushBits = 0x8040;  ///< Flush-to-zero and denormals-are-zero, bits 15 and 6 of MXCSR.
  unsigned saved;
#else
  DenormalGuard() = default;
  ~DenormalGuard() = default;
#endif
};

}  // namespace tesh::bramel::platform
