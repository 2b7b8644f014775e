// Four 32-bit lanes in one register, for the rows of the hall's memory.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

namespace tesh::bramel::plugin::sivray::effects {

using Lanes = std::int32_t __attribute__((vector_size(16)));
using UnsignedLanes = std::uint32_t __attribute__((vector_size(16)));
using LanesInt16 = std::int16_t __attribute__((vector_size(8)));

/// The four samples from `row` on, widened.
inline Lanes loadRow(const std::int16_t* row) {
  LanesInt16 narrow;
  std::memcpy(&narrow, row, sizeof(narrow));
  return __builtin_convertvector(narrow, Lanes);
}

/// Stores four values that lie in the 16-bit range.
inline void storeRow(std::int16_t* row, Lanes values) {
  const LanesInt16 narrow = __builtin_convertvector(values, LanesInt16);
  std::memcpy(row, &narrow, sizeof(narrow));
}

/// (a * b) >> 15, with products that wrap at 32 bits.
inline Lanes mul15(Lanes a, Lanes b) {
  return reinterpret_cast<Lanes>(reinterpret_cast<UnsignedLanes>(a) * reinterpret_cast<UnsignedLanes>(b)) >> 15;
}

/// Limits each lane to -32767 .. 32767.
inline Lanes saturate(Lanes x) {
  const Lanes top = Lanes{} + 32767;
  const Lanes limited = x > top ? top : x;
  return limited < -top ? -top : limited;
}

/// Samples of one channel: lane 0 to lane 3 added up.
inline std::int32_t sumOf(Lanes x) { return x[0] + x[1] + x[2] + x[3]; }

}  // namespace tesh::bramel::plugin::sivray::effects
