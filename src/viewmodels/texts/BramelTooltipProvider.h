// The texts of parameters and values, for hosts and tooltips. This base class stores the last value of each parameter;
// instruments derive from it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/RealTime.h"

namespace tesh::bramel::tooltip {

/// One call at a time.
class BramelTooltipProvider {
 public:
  virtual ~BramelTooltipProvider() = default;

  /// A name to show instead of the parameter's own; empty for none.
  virtual std::string getParameterName(std::uint64_t index);

  /// The text of the last value of a parameter.
  virtual std::string getParameterText(std::uint64_t index) = 0;

  /// The last value that was set, 0 to 1; 0 if none was set, and for indices from kLongestList on.
  float getValue(std::uint64_t index);
  void setValue(std::uint64_t index, float value) SIVRAY_NONBLOCKING;

  /// Makes room for `count` values, so that setting them allocates nothing.
  void reserve(std::size_t count) { values.resize(count); }

 private:
  static constexpr std::uint64_t kLongestList = 65536;
  std::vector<float> values;
};

}  // namespace tesh::bramel::tooltip
