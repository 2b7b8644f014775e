// Compares with the texts of all values.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/texts/ValueOfText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "core/Text.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"

namespace tesh::bramel::tooltip {
namespace {

/// Number of values that are tried: enough to hit each of the up to 512 texts of a parameter.
constexpr int kTried = 2000;

constexpr std::string_view kDigits = "0123456789";

/// The number at the beginning of the text; 0 if there is none.
double numberIn(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
  }
  double number = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

bool isSame(std::string_view one, std::string_view other) {
  const auto lower = [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
  };
  return std::ranges::equal(one, other, {}, lower, lower);
}

}  // namespace

std::optional<float> valueOfText(std::uint64_t index, std::string_view text) {
  const std::string_view wanted = cofu::core::trimmed(text);
  const double number = numberIn(wanted);
  SivrayTooltipProvider texts;
  // Distance to the text's number.
  double nearest = wanted.find_first_of(kDigits) != std::string_view::npos ? HUGE_VAL : 0.0;
  int first = -1;  // First of the consecutive steps that are nearest.
  int last = -1;
  for (int step = 0; step <= kTried; ++step) {
    texts.setValue(index, static_cast<float>(step) / static_cast<float>(kTried));
    const std::string tried = texts.getParameterText(index);
    const double distance = isSame(tried, wanted) ? -1.0 : std::fabs(numberIn(tried) - number);
    if (distance < nearest) {
      nearest = distance;
      first = step;
    }
    last = distance == nearest ? step : last;
  }
  if (first < 0) {
    return std::nullopt;
  }
  // The middle of these steps, but the exact ends of the range.
  const int row = first == 0 ? 0 : last == kTried ? 2 * kTried : first + last;
  return static_cast<float>(row) / static_cast<float>(2 * kTried);
}

}  // namespace tesh::bramel::tooltip
