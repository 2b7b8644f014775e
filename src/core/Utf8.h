// Where the characters of a UTF-8 text begin, for texts that must fit a number of bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string_view>

namespace tesh::cofu::core {

/// True for the bytes of a character behind its first one.
constexpr bool isUtf8Continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// At most `most` bytes from the start of the text, without a part of a character at their end.
constexpr std::string_view utf8Start(std::string_view text, std::size_t most) {
  if (text.size() <= most) {
    return text;
  }
  while (most > 0 && isUtf8Continuation(text[most])) {
    --most;
  }
  return text.substr(0, most);
}

}  // namespace tesh::cofu::core
