// The tube stage for AVX2: four samples at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstring>

#include "core/VectorCode.h"
#include "effects/dynamics/Kilnode.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/dynamics/TubeCurve.h"

namespace tesh::bramel::plugin::fxkit {
namespace {

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
