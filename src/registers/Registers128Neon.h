// Registers of 128 bits on 64-bit ARM: the operations that need fewer of its own instructions than a translation of
// x86's would. Registers128Sse2.h describes the operations and provides the others.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <arm_neon.h>

#include "registers/Registers128Sse2.h"

namespace tesh::cofu::registers {

struct Registers128Neon : Registers128Sse2 {
  // Lanes of 16 bits.
  static Integers abs16(Integers v) { return vreinterpretq_s64_s16(vabsq_s16(in16(v))); }

  // Lanes of 32 bits.
  static Integers min32(Integers a, Integers b) { return from32(vminq_s32(in32(a), in32(b))); }
  static Integers max32(Integers a, Integers b) { return from32(vmaxq_s32(in32(a), in32(b))); }
  static Integers limited32(Integers v, Integers bottom, Integers top) { return max32(min32(v, top), bottom); }
  static Integers abs32(Integers v) { return from32(vabsq_s32(in32(v))); }
  static Integers mulLow32(Integers a, Integers b) { return from32(vmulq_s32(in32(a), in32(b))); }
  static Integers neighbourSums32(Integers a, Integers b) { return from32(vpaddq_s32(in32(a), in32(b))); }
  using Registers128Sse2::shiftRight32;
  static Integers shiftRight32(Integers v, Count bits) {
    return from32(vshlq_s32(in32(v), vdupq_laneq_s32(vnegq_s32(in32(bits)), 0)));
  }
  template <int kBits>
  static Integers mulShiftUnsigned32(Integers a, Integers b) {
    const uint32x4_t x = vreinterpretq_u32_s64(a);
    const uint32x4_t y = vreinterpretq_u32_s64(b);
    const uint64x2_t low = vshrq_n_u64(vmull_u32(vget_low_u32(x), vget_low_u32(y)), kBits);
    const uint64x2_t high = vshrq_n_u64(vmull_high_u32(x, y), kBits);
    return vreinterpretq_s64_u32(vuzp1q_u32(vreinterpretq_u32_u64(low), vreinterpretq_u32_u64(high)));
  }

  // Tests of all lanes.
  static bool isZero(Integers v) { return vmaxvq_u32(vreinterpretq_u32_s64(v)) == 0; }
  static bool overlap(Integers a, Integers b) { return !isZero(bitAnd(a, b)); }

  // Arrangement.
  static Integers uppers16(Integers a, Integers b) {
    return vreinterpretq_s64_u32(vsriq_n_u32(vreinterpretq_u32_s64(b), vreinterpretq_u32_s64(a), 16));
  }

 private:
  static int16x8_t in16(Integers v) { return vreinterpretq_s16_s64(v); }
  static int32x4_t in32(Integers v) { return vreinterpretq_s32_s64(v); }
  static Integers from32(int32x4_t v) { return vreinterpretq_s64_s32(v); }
};

static_assert(IntegerRegisters<Registers128Neon> && FloatRegisters<Registers128Neon>);

}  // namespace tesh::cofu::registers
