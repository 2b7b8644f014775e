// The sizes of the fixed records in the index files of a sample library. All numbers in them are little-endian words.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace tesh::bramel::plugin::sivray {

inline constexpr std::size_t kSampleRecordBytes = 12;  ///< First sample, last sample, rate in Hz: three words.
inline constexpr std::size_t kWaveRecordBytes = 24;    ///< Type or category, name, two words.
inline constexpr std::size_t kWaveNameBytes = 12;      ///< Padded with zero bytes; a full-length name has none.

/// A record of the category file has two words after the name. The first is 0, or, between two factory waves' records,
/// the distance of their numbers, at most this.
/// records the distance of their numbers, at most this.
inline constexpr std::uint32_t kMostNumbersPerFactoryWave = 64;

/// The distance in content with own sounds: factory wave w then has the number 8w. Divided by the highest number this
/// gives the same value as in the factory's own content, also in single precision.
inline constexpr std::int32_t kNumbersPerFactoryWave = 8;

}  // namespace tesh::bramel::plugin::sivray
