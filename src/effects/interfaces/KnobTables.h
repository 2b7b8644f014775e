// The three curves that turn a knob value (0 to 127) into a Q15 gain, and ranges along them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/Knobs.h"

namespace tesh::bramel::plugin::sivray::effects {

/// A table of `kCount` values of `law(index)`, truncated.
template <typename Value, std::size_t kCount = kTopKnob + 1, typename Law>
constexpr std::array<Value, kCount> tableOf(Law law) {
  std::array<Value, kCount> table{};
  for (std::size_t i = 0; i < kCount; ++i) {
    table[i] = static_cast<Value>(law(static_cast<int>(i)));
  }
  return table;
}

using KnobTable = std::array<std::int16_t, kTopKnob + 1>;

inline constexpr int kTopKnobSquared = kTopKnob * kTopKnob;

/// 258 * i, with the last entry limited to 32767.
inline constexpr KnobTable linearTable =
    tableOf<std::int16_t>([](int i) { return i == kTopKnob ? cofu::core::kFullScale : 258 * i; });

/// 32767 * (i / 127)^2, exactly, in integers.
inline constexpr KnobTable squareTable =
    tableOf<std::int16_t>([](int i) { return cofu::core::kFullScale * i * i / kTopKnobSquared; });

/// 32767 * (1 - (1 - i / 127)^2), also exact, in integers.
inline constexpr KnobTable convexTable = tableOf<std::int16_t>([](int i) {
  const int rest = kTopKnob - i;
  return cofu::core::kFullScale * (kTopKnobSquared - rest * rest) / kTopKnobSquared;
});

/// The entry for a knob value of 0 to 127.
template <typename Table>
constexpr const auto& valueAt(const Table& table, int knob) {
  return table[static_cast<std::size_t>(knob)];
}

/// Q15 values along the square curve: `least` at knob 0, `least + span` at knob 127.
struct SquareRange {
  std::int32_t least;
  std::int32_t span;

  constexpr std::int32_t at(int knob) const { return cofu::core::mul15(valueAt(squareTable, knob), span) + least; }
};

/// Output level of drive and distortion: 0.039 (-28 dB) to 1.0.
inline constexpr SquareRange kDriveLevel{1279, 31489};

/// 1/127: converts a knob value to 0.0 .. 1.0, as the older effect interface takes it.
inline constexpr float kKnobToUnit = 0.007874016F;

}  // namespace tesh::bramel::plugin::sivray::effects
