// Formats numbers and cuts them to eight characters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/vst/NumberText.h"

#include <algorithm>
#include <cmath>

namespace tesh::bramel::vst {
namespace {

constexpr std::size_t kNumberCharacters = 8;
constexpr const char* kTooLong = "Huge!";
/// Numbers between these have at most eight characters before the point, sign included.
constexpr double kLongestPositive = 99999999.0;
constexpr double kLongestNegative = -9999999.0;

}  // namespace

std::string floatText(double value) {
  if (!(value >= kLongestNegative && value <= kLongestPositive)) {
    return kTooLong;
  }
  const double magnitude = std::fabs(value);
  const double whole = std::floor(magnitude);
  std::string text = value < 0.0 ? "-" : "";
  text += std::to_string(static_cast<std::int32_t>(whole));
  if (text.size() == kNumberCharacters) {
    return text;
  }
  text += '.';
  double rest = magnitude - whole;
  while (text.size() < kNumberCharacters) {
    rest *= 10.0;
    const int digit = static_cast<int>(rest);
    text += static_cast<char>('0' + digit);
    rest -= digit;
  }
  return text;
}

std::string integerText(std::int32_t value) {
  std::string text = std::to_string(value);
  return text.size() <= kNumberCharacters ? text : kTooLong;
}

std::string levelText(float level) {
  if (!(level > 0.0F)) {
    return "-oo";
  }
  // Rounded to single precision first: a level of 0.1 must give -20 decibels, not a little less with its digits cut
  // off.
  return floatText(static_cast<double>(static_cast<float>(20.0 * std::log10(static_cast<double>(level)))));
}

void copyText(char* destination, std::string_view text, std::size_t capacity) {
  if (destination == nullptr || capacity == 0) {
    return;
  }
  const std::size_t length = std::min(text.size(), capacity - 1);
  std::copy_n(text.data(), length, destination);
  destination[length] = '\0';
}

}  // namespace tesh::bramel::vst
