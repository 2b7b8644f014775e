// Character boundaries of UTF-8 texts, for texts that must fit into a number of bytes, and where a file's text begins.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string_view>

namespace tesh::cofu::core {

/// True for every byte of a character except its first.
constexpr bool isUtf8Continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// The longest start of the text that has at most `most` bytes and ends with a whole character.
constexpr std::string_view utf8Start(std::string_view text, std::size_t most) {
  if (text.size() <= most) {
    return text;
  }
  while (most > 0 && isUtf8Continuation(text[most])) {
    --most;
  }
  return text.substr(0, most);
}

/// The text behind the mark with which some editors begin a file of UTF-8.
constexpr std::string_view withoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

}  // namespace tesh::cofu::core
