// Flushes denormal numbers to zero within a scope, and restores the previous setting at its end.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace tesh::cofu::registers {

/// Changes the calling thread's control register, so it must be destroyed on the thread that made it. Audio thread.
/// Does nothing on other processors than x86 and 64-bit ARM.
class DenormalGuard {
 public:
  DenormalGuard() : saved(control()) { setControl(saved | kFlushBits); }
  DenormalGuard(const DenormalGuard&) = delete;
  DenormalGuard& operator=(const DenormalGuard&) = delete;
  ~DenormalGuard() { setControl(saved); }

 private:
#if defined(__x86_64__) || defined(__i386__)
  using Control = unsigned;
  static constexpr Control kFlushBits = 0x8040;  ///< Flush-to-zero and denormals-are-zero, bits 15 and 6 of MXCSR.
  static Control control() { return _mm_getcsr(); }
  static void setControl(Control value) { _mm_setcsr(value); }
#elif defined(__aarch64__)
  using Control = std::uint64_t;
  static constexpr Control kFlushBits = 1U << 24;  ///< Flush-to-zero, FZ in FPCR: operands and results.
  static Control control() {
    Control value = 0;
    asm volatile("mrs %0, fpcr" : "=r"(value));
    return value;
  }
  static void setControl(Control value) { asm volatile("msr fpcr, %0" : : "r"(value) : "memory"); }
#else
  using Control = unsigned;
  static constexpr Control kFlushBits = 0;
  static Control control() { return 0; }
  static void setControl(Control) {}
#endif

  Control saved;
};

}  // namespace tesh::cofu::registers
