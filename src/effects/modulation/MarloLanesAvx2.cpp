// The Marlo effects' runs in lanes for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/VectorCode.h"
#include "effects/modulation/MarloChorus.h"
#include "effects/modulation/MarloEnsemble.h"
#include "effects/modulation/MarloPhase.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/modulation/EnsembleLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Eight consecutive samples.
struct MarloEight {
  static constexpr unsigned kCount = 8;
  using Floats = float __attribute__((vector_size(32)));
  using Integers = std::int32_t __attribute__((vector_size(32)));
  using Samples = std::int16_t __attribute__((vector_size(16)));
  static constexpr Integers kAscending{0, 1, 2, 3, 4, 5, 6, 7};
  using FourPairs = std::int64_t __attribute__((vector_size(32)));

  template <typename Make>
  static Floats made(Make&& make) {
    const Floats values{make(0), make(1), make(2), make(3), make(4), make(5), make(6), make(7)};
    return values;
  }
  static constexpr unsigned kQuads = 2;
  static void split(Floats x, MarloQuad* quads) {
    quads[0] = __builtin_shufflevector(x, x, 0, 1, 2, 3);
    quads[1] = __builtin_shufflevector(x, x, 4, 5, 6, 7);
  }
  static Floats joined(const MarloQuad* quads) {
    return __builtin_shufflevector(quads[0], quads[1], 0, 1, 2, 3, 4, 5, 6, 7);
  }
  static void interleave(Floats left, Floats right, MarloQuad* quads) {
    const Floats outer = __builtin_shufflevector(left, right, 0, 8, 1, 9, 4, 12, 5, 13);
    const Floats inner = __builtin_shufflevector(left, right, 2, 10, 3, 11, 6, 14, 7, 15);
    quads[0] = __builtin_shufflevector(outer, outer, 0, 1, 2, 3);
    quads[1] = __builtin_shufflevector(inner, inner, 0, 1, 2, 3);
    quads[2] = __builtin_shufflevector(outer, outer, 4, 5, 6, 7);
    quads[3] = __builtin_shufflevector(inner, inner, 4, 5, 6, 7);
  }
  static void separate(const MarloQuad* quads, Floats& left, Floats& right) {
    const Floats outer = __builtin_shufflevector(quads[0], quads[2], 0, 1, 2, 3, 4, 5, 6, 7);
    const Floats inner = __builtin_shufflevector(quads[1], quads[3], 0, 1, 2, 3, 4, 5, 6, 7);
    left = __builtin_shufflevector(outer, inner, 0, 2, 8, 10, 4, 6, 12, 14);
    right = __builtin_shufflevector(outer, inner, 1, 3, 9, 11, 5, 7, 13, 15);
  }
  /// In the order in which the shuffles below take them.
  static void readPairs(const float* from, Integers at, Floats& first, Floats& second) {
    const FourPairs even{pairAt(from, at[0]), pairAt(from, at[1]), pairAt(from, at[4]), pairAt(from, at[5])};
    const FourPairs odd{pairAt(from, at[2]), pairAt(from, at[3]), pairAt(from, at[6]), pairAt(from, at[7])};
    const auto a = reinterpret_cast<Floats>(even);
    const auto b = reinterpret_cast<Floats>(odd);
    first = __builtin_shufflevector(a, b, 0, 2, 8, 10, 4, 6, 12, 14);
    second = __builtin_shufflevector(a, b, 1, 3, 9, 11, 5, 7, 13, 15);
  }
  static Floats reversed(Floats x) { return __builtin_shufflevector(x, x, 7, 6, 5, 4, 3, 2, 1, 0); }
};

}  // namespace

unsigned MarloChorus::runAvx2(MarloChorus& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runMarloChorus<MarloEight>(law, left, right, count);
}

unsigned MarloEnsemble::runAvx2(MarloEnsemble& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runEnsemble<MarloEight>(law, left, right, count);
}

unsigned MarloPhase::runAvx2(MarloPhase& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runMarloPhase<MarloEight>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
