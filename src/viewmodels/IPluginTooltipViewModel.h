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

  /// A name to show instead of the parameter's own; empty for none.
  virtual std::string getName(std::uint64_t index) const = 0;
  /// The text of the value that was passed to `onValueChanged` last; before that, the text of 0.
  virtual std::string getText(std::uint64_t index) const = 0;
  virtual void onValueChanged(std::uint64_t index, float value) = 0;
};

}  // namespace tesh::bramel
