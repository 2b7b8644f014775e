// Quantiles and lines of text, for the measure's reports.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace sivray::content {

/// As printf, up to 255 characters.
template <typename... Values>
std::string formatted(const char* format, Values... values) {
  std::array<char, 256> text{};
  std::snprintf(text.data(), text.size(), format, values...);
  return text.data();
}

/// Returns the value below which the share `part` (0 to 1) of the values lie, interpolated linearly. 0 if there are
/// none.
inline double quantile(std::vector<double> values, double part) {
  if (values.empty()) {
    return 0.0;
  }
  std::ranges::sort(values);
  const double place = part * static_cast<double>(values.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, values.size() - 1);
  return values[below] + (place - std::floor(place)) * (values[above] - values[below]);
}

inline double medianOf(const std::vector<double>& values) { return quantile(values, 0.5); }

}  // namespace sivray::content
