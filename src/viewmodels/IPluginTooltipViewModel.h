// The two lines of a parameter's tooltip.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tesh::bramel {

/// Message thread only.
class IPluginTooltipViewModel {
 public:
  virtual ~IPluginTooltipViewModel() = default;

  /// A name that replaces the parameter's own, or the empty string.
  virtual std::string getName(std::uint64_t index) const = 0;
  /// The text of the value that `onValueChanged` gave last; that of 0 before.
  virtual std::string getText(std::uint64_t index) const = 0;
  virtual void onValueChanged(std::uint64_t index, float value) = 0;
};

}  // namespace tesh::bramel
