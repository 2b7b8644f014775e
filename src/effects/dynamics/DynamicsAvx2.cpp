// The runs of pump, drive and tube stage for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstring>

#include "core/VectorCode.h"
#include "effects/dynamics/Kilnode.h"
#include "effects/dynamics/Pump.h"
#include "effects/dynamics/Q60393Drive.h"
#include "effects/interfaces/OneSample.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/dynamics/DriveStep.h"
#include "effects/dynamics/PumpStep.h"
#include "effects/dynamics/TubeCurve.h"
#include "effects/interfaces/SerialRun.h"

namespace tesh::bramel::plugin::sivray::effects {

unsigned Pump::runAvx2(Pump& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runBeat<Samples256>(law, left, right, count);
}

/// Limits and magnitudes take a step each.
unsigned Q60393Drive::runAvx2(Q60393Drive& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runSerially(law, left, right, count, [](Q60393Drive& now, std::int16_t& l, std::int16_t& r) {
    stepDrive<cofu::registers::Registers128Sse41>(now, l, r);
  });
}

}  // namespace tesh::bramel::plugin::sivray::effects

namespace tesh::bramel::plugin::fxkit {
namespace {

/// As OneValue, for four at once.
struct FourValues {
  using Floats = float __attribute__((vector_size(16)));
  using Words = std::int32_t __attribute__((vector_size(16)));
  using Doubles = double __attribute__((vector_size(32)));
  using Longs = std::uint64_t __attribute__((vector_size(32)));

  static Doubles widened(Floats x) { return __builtin_convertvector(x, Doubles); }
  static Floats narrowed(Doubles x) { return __builtin_convertvector(x, Floats); }
  template <typename To, typename From>
  static To as(From x) {
    return reinterpret_cast<To>(x);
  }
  static Floats load(const float* values) {
    Floats four;
    std::memcpy(&four, values, sizeof(four));
    return four;
  }
};

}  // namespace

[[gnu::flatten]] void throughTubeAvx2(float* samples, const float* drives, const float* mixes, unsigned count) {
  using Four = FourValues;
  for (unsigned i = 0; i < count; i += 4) {
    const Four::Floats sound = tube<Four>(Four::load(samples + i), Four::load(drives + i), Four::load(mixes + i));
    std::memcpy(samples + i, &sound, sizeof(sound));
  }
}

}  // namespace tesh::bramel::plugin::fxkit

SIVRAY_COMPILE_FOR_ALL
