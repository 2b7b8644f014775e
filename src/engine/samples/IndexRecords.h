// The parts that the fixed records of the index files share: little-endian words and names of twelve bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tesh::bramel::plugin::sivray {

inline constexpr std::size_t kSampleRecordBytes = 12;
inline constexpr std::size_t kWaveRecordBytes = 24;
inline constexpr std::size_t kWaveNameBytes = 12;

/// The little-endian word at `offset`, which must lie inside `bytes` with all four bytes.
inline std::uint32_t wordAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    word |= static_cast<std::uint32_t>(bytes[offset + i]) << (8 * i);
  }
  return word;
}

/// The name at `offset`: up to the first zero byte or the end of the field.
inline std::string nameAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
  const auto field = bytes.subspan(offset, kWaveNameBytes);
  return {field.begin(), std::find(field.begin(), field.end(), std::uint8_t{0})};
}

}  // namespace tesh::bramel::plugin::sivray
