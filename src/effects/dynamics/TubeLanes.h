// The curve of the tube stage for four samples at once, operation by operation as in TubeCurve.h and Exponential.h.
// It belongs to a source file that is compiled for AVX2, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

#include "effects/dynamics/TubeCurve.h"

namespace tesh::bramel::plugin::fxkit {
namespace {

using FourFloats = float __attribute__((vector_size(16)));
using FourWords = std::int32_t __attribute__((vector_size(16)));
using FourDoubles = double __attribute__((vector_size(32)));
using FourLongs = std::uint64_t __attribute__((vector_size(32)));

inline FourFloats loadFour(const float* samples) {
  FourFloats four;
  std::memcpy(&four, samples, sizeof(four));
  return four;
}

inline FourFloats exponentialsOfNegative(FourFloats x) {
  const FourDoubles wide = __builtin_convertvector(x, FourDoubles);
  const FourDoubles lowest = FourDoubles{} + kLowestExponent;
  const FourDoubles t = wide > lowest ? wide : lowest;
  const FourDoubles shifted = t * kLog2E + kRounder;
  const FourDoubles r = t - (shifted - kRounder) * kLn2;
  const FourDoubles r2 = r * r;
  FourDoubles p = kTaylor[12] + r * kTaylor[13];
  for (std::size_t pair = 6; pair-- > 0;) {
    p = p * r2 + (kTaylor[2 * pair] + r * kTaylor[2 * pair + 1]);
  }
  const FourLongs scaled = reinterpret_cast<FourLongs>(p) + (reinterpret_cast<FourLongs>(shifted) << 52);
  return __builtin_convertvector(reinterpret_cast<FourDoubles>(scaled), FourFloats);
}

inline FourFloats tubes(FourFloats in, FourFloats drive, FourFloats mix) {
  const FourFloats x = drive * in * kTubeInputScale;
  const auto magnitude = reinterpret_cast<FourFloats>(reinterpret_cast<FourWords>(x) & 0x7FFFFFFF);
  const FourFloats rise = 1.0F - exponentialsOfNegative(-kTubeSteepness * magnitude);
  const FourFloats y = x >= 0.0F ? rise * kTubeUpperHeight : -rise * kTubeLowerHeight;
  const FourFloats mixed = (1.0F - mix) * in + mix * y;
  const FourFloats top = FourFloats{} + 1.0F;
  const FourFloats notBelow = mixed < -top ? -top : mixed;
  return notBelow > top ? top : notBelow;
}

inline void throughTubes(float* samples, const float* drives, const float* mixes, unsigned count) {
  for (unsigned i = 0; i < count; i += 4) {
    const FourFloats four = tubes(loadFour(samples + i), loadFour(drives + i), loadFour(mixes + i));
    std::memcpy(samples + i, &four, sizeof(four));
  }
}

}  // namespace
}  // namespace tesh::bramel::plugin::fxkit
