// What the records of the sample index files are made of: little-endian words and names of twelve bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tesh::bramel::plugin::sivray {

inline constexpr std::size_t kSampleRecordBytes = 12;  ///< First sample, last sample, rate in Hz: three words.
inline constexpr std::size_t kWaveRecordBytes = 24;    ///< Type or category, name, two words.
inline constexpr std::size_t kWaveNameBytes = 12;

/// The little-endian word at `offset`. All four bytes must lie inside `bytes`.
inline std::uint32_t wordAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    word |= static_cast<std::uint32_t>(bytes[offset + i]) << (8 * i);
  }
  return word;
}

/// The name at `offset`, up to its first zero byte and at most twelve bytes long. They must lie inside `bytes`.
inline std::string nameAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
  const auto field = bytes.subspan(offset, kWaveNameBytes);
  return {field.begin(), std::find(field.begin(), field.end(), std::uint8_t{0})};
}

}  // namespace tesh::bramel::plugin::sivray
