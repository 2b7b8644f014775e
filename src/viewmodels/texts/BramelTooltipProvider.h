// The text of parameters and their values, for hosts and tooltips: the family's base keeps the last value of each.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/RealTime.h"

namespace tesh::bramel::tooltip {

/// Not thread-safe: its owner guards it.
class BramelTooltipProvider {
 public:
  virtual ~BramelTooltipProvider() = default;

  /// A name that replaces the parameter's own, or the empty string.
  virtual std::string getParameterName(std::uint64_t index);

  /// The text of the last value of a parameter.
  virtual std::string getParameterText(std::uint64_t index) = 0;

  /// The last value; 0 for a parameter that has had none. Any index below kLongestList is good, others read 0.
  float getValue(std::uint64_t index);
  void setValue(std::uint64_t index, float value) SIVRAY_NONBLOCKING;

  /// Makes room for `count` values, so that setting them allocates nothing.
  void reserve(std::size_t count) { values.resize(count); }

 private:
  static constexpr std::uint64_t kLongestList = 65536;
  std::vector<float> values;
};

}  // namespace tesh::bramel::tooltip
