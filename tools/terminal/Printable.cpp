// `printable` replaces the control characters: those below the blank, the one above the tilde, and U+0080 to U+009F,
// which are a C2 byte and one below A0.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "terminal/Printable.h"

namespace sivray {

std::string printable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const unsigned char next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
    const bool isHighControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
    const bool isControl = byte < 0x20 || byte == 0x7F || isHighControl;
    result += isControl ? '?' : text[i];
    i += isHighControl ? 1 : 0;
  }
  return result;
}

std::string counted(std::size_t count, const char* one, const char* several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

}  // namespace sivray
