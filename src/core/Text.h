// Trims blanks from texts, and reads numbers in them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace tesh::cofu::core {

/// Returns the text without leading and trailing blanks and line ends.
constexpr std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

/// Returns the number if the whole text is one, in the C locale; `base` applies to integers. Returns nothing for any
/// other text, including one with a leading blank or plus sign, and for a number that `Number` cannot hold.
template <typename Number>
std::optional<Number> readNumber(std::string_view text, [[maybe_unused]] int base = 10) {
  const char* const end = text.data() + text.size();
  Number number{};
  std::from_chars_result read{};
  if constexpr (std::is_integral_v<Number>) {
    read = std::from_chars(text.data(), end, number, base);
  } else {
    read = std::from_chars(text.data(), end, number);
  }
  return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

}  // namespace tesh::cofu::core
