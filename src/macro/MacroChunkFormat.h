// The versions of the macro chunk, for the controller, which reads and writes chunks, and for tools that inspect them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::vimo::chunk {

inline constexpr std::uint32_t kVersionValues = 512;        ///< Values, no texts.
inline constexpr std::uint32_t kVersionTexts = 768;         ///< Texts, time and selection after the values.
inline constexpr std::uint32_t kVersionMoved = 1024;        ///< The same, with these header words moved back by one.
inline constexpr std::uint32_t kVersionWithObjects = 1280;  ///< The newest: each value is followed by an object.

/// Words of the newest header, the longest of all.
inline constexpr std::uint32_t kLongestHeaderWords = 12;

/// The length of a version's header in words; 0 for an unknown version.
constexpr std::uint32_t headerWords(std::uint32_t version) {
  switch (version) {
    case kVersionValues:
      return 6;
    case kVersionTexts:
      return 11;
    case kVersionMoved:
    case kVersionWithObjects:
      return kLongestHeaderWords;
    default:
      return 0;
  }
}

}  // namespace tesh::vimo::chunk
