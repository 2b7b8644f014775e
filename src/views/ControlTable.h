// Which control shows which parameter, and the value of a control of any kind.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "viewmodels/texts/ParameterSteps.h"
#include "widgets/IBWControl.h"

namespace tesh::bramel {

/// Message thread only.
class ControlTable {
 public:
  /// Makes room for parameters 0 to count - 1, all without a control.
  void resize(std::size_t count) { controls.assign(count, nullptr); }
  std::size_t size() const { return controls.size(); }

  /// Binds a control to a parameter, 0 to size() - 1; others are ignored.
  void set(std::uint64_t index, std::shared_ptr<IBWControl> control);
  /// Null for a parameter without a control, and past the table.
  IBWControl* at(std::uint64_t index) const;

 private:
  std::vector<std::shared_ptr<IBWControl>> controls;
};

/// The parameter that `control` is bound to.
std::optional<std::uint64_t> parameterOf(const IBWControl& control);

/// The normalised value of a control of any kind; 0 for one that has none.
float valueOf(IBWControl& control, const IParameterQuantizer& quantizer);

/// Moves a control of any kind without a notification. `stateCount` is that of the value, for a control of several
/// states.
void setValueOf(IBWControl& control, float value, const IParameterQuantizer& quantizer, std::uint64_t stateCount);

/// The number of states that the control itself has; 0 for one that is not of several states.
std::uint64_t stateCountOf(IBWControl& control);

}  // namespace tesh::bramel
