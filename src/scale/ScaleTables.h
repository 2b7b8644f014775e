// The tables of all 35 scales: intervals, orders of importance and chords, in semitones and degrees.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace scale {

inline constexpr std::size_t kScaleCount = 35;
inline constexpr std::size_t kMostDegrees = 12;  ///< Notes per octave of the chromatic scale.

/// The five four-note chords that scales have on their degrees.
enum class ChordCode : std::uint8_t { kM7, kMinor7, k7, kMinor7Flat5, kDiminished7 };

using ChordRow = std::array<std::uint16_t, 4>;

/// Close position, by ChordCode: root, third, fifth, seventh.
inline constexpr std::array<ChordRow, 5> kClosedRows{
    {{0, 4, 7, 11}, {0, 3, 7, 10}, {0, 4, 7, 10}, {0, 3, 6, 10}, {0, 3, 6, 9}}};

/// The same chords in open position: the second and the fourth note are an octave higher.
inline constexpr std::array<ChordRow, 5> kOpenRows{
    {{0, 16, 7, 23}, {0, 15, 7, 22}, {0, 16, 7, 22}, {0, 15, 6, 22}, {0, 15, 6, 21}}};

struct ScaleTable {
  const char* name;
  std::size_t noteCount;
  std::array<std::int32_t, kMostDegrees> intervals;   ///< Semitones above the root, by degree.
  std::array<std::int32_t, kMostDegrees> keyOrder;    ///< Degrees by importance for keys.
  std::array<std::int32_t, kMostDegrees> chordOrder;  ///< Degrees by importance for chords.
  std::array<ChordCode, kMostDegrees> chords;         ///< By degree. Scales with a pattern or a drone ignore it.
  ChordRow pattern;                                   ///< The only chord of a pattern scale; zeros in all others.
  std::array<std::int32_t, kMostDegrees> chordRoots;  ///< Semitones above the root, by degree.
  std::array<std::int32_t, 4> stack;                  ///< The close chord's notes, in degrees above its own.
};

/// Indexed by the scale's number.
extern const std::array<ScaleTable, kScaleCount> kScaleTables;

}  // namespace scale
