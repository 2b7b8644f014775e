// Plain words for laws with many products: a 32-bit value in 64 bits, so that it need not be widened for each product.
// OneSample.h and WordLanes.h have the same operations.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "effects/interfaces/OneSample.h"

namespace tesh::bramel::plugin::sivray::effects::lanes {

struct OneLong {
  std::int64_t v;

  static OneLong all(std::int32_t value) { return {value}; }

  template <int kBits>
  OneLong shiftedRight() const {
    return {v >> kBits};
  }
  /// Keeps the lower 32 bits.
  template <int kBits>
  OneLong loweredBy() const {
    return {static_cast<std::int32_t>(v >> kBits)};
  }
};

inline OneLong operator+(OneLong a, OneLong b) { return {a.v + b.v}; }
inline OneLong operator-(OneLong a, OneLong b) { return {a.v - b.v}; }
inline OneLong operator*(OneLong a, OneLong b) { return {a.v * b.v}; }

/// a + (b - c) * factor, with one product.
inline OneLong plusScaledDifference(OneLong a, OneLong b, OneLong c, OneLong factor) { return a + (b - c) * factor; }

template <int kBits>
OneLong signedProduct(OneLong a, OneLong b) {
  return (a * b).template shiftedRight<kBits>();
}

inline OneLong limitedSum(OneLong a, OneLong b, std::int64_t limit) { return {std::clamp(a.v + b.v, -limit, limit)}; }
inline OneLong magnitude(OneLong a) { return {std::abs(a.v)}; }
inline OneLong larger(OneLong a, OneLong b) { return {std::max(a.v, b.v)}; }

inline OneSample saturatedSamples(OneLong a) {
  constexpr std::int64_t kLimit = cofu::core::kFullScale;
  return {static_cast<std::int32_t>(std::clamp(a.v, -kLimit, kLimit))};
}

}  // namespace tesh::bramel::plugin::sivray::effects::lanes
