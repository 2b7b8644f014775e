// The sizes of the fixed records in the index files of a sample library. All numbers in them are little-endian words.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace tesh::bramel::plugin::sivray {

inline constexpr std::size_t kSampleRecordBytes = 12;  ///< First sample, last sample, rate in Hz: three words.
inline constexpr std::size_t kWaveRecordBytes = 24;    ///< Type or category, name, two words.
inline constexpr std::size_t kWaveNameBytes = 12;      ///< Ends at its first zero byte, or with the field.

}  // namespace tesh::bramel::plugin::sivray
