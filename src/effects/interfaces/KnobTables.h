// The three curves that turn a knob value (0 to 127) into a Q15 gain, and ranges along them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/Knobs.h"

namespace tesh::bramel::plugin::sivray::effects {

using KnobTable = std::array<std::int16_t, 128>;

namespace detail {
constexpr int kTopSquared = kTopKnob * kTopKnob;

/// trunc(32767 * (i / 127)^2), exactly, in integers.
constexpr std::int32_t squareOfKnob(int i) { return cofu::core::kFullScale * i * i / kTopSquared; }
/// trunc(32767 * (1 - (1 - i / 127)^2)), exactly, in integers.
constexpr std::int32_t convexOfKnob(int i) {
  return cofu::core::kFullScale * (kTopSquared - (kTopKnob - i) * (kTopKnob - i)) / kTopSquared;
}

template <typename Law>
constexpr KnobTable makeKnobTable(Law law) {
  KnobTable table{};
  for (int i = 0; i < 128; ++i) {
    table[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(law(i));
  }
  return table;
}
}  // namespace detail

/// 258 * i, with the last entry held to 32767.
inline constexpr KnobTable linearTable =
    detail::makeKnobTable([](int i) { return i == kTopKnob ? cofu::core::kFullScale : 258 * i; });

/// 32767 * (i / 127)^2, truncated.
inline constexpr KnobTable squareTable = detail::makeKnobTable(detail::squareOfKnob);

/// 32767 * (1 - (1 - i / 127)^2), truncated.
inline constexpr KnobTable convexTable = detail::makeKnobTable(detail::convexOfKnob);

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

/// 1/127: makes a knob value 0.0 .. 1.0, as the older effect interface takes it.
inline constexpr float kKnobToUnit = 0.007874016F;

}  // namespace tesh::bramel::plugin::sivray::effects
