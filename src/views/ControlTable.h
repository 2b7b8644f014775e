// The control of each parameter, and the value of a control of any kind.
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
  /// Makes room for parameters 0 to count - 1, initially without controls.
  void resize(std::size_t count) { controls.assign(count, nullptr); }
  std::size_t size() const { return controls.size(); }

  /// Binds a control to a parameter, 0 to size() - 1; ignores other indices.
  void set(std::uint64_t index, std::shared_ptr<IBWControl> control);
  /// Null for a parameter without a control, and past the table.
  IBWControl* at(std::uint64_t index) const;

 private:
  std::vector<std::shared_ptr<IBWControl>> controls;
};

/// The parameter that `control` is bound to.
std::optional<std::uint64_t> parameterOf(const IBWControl& control);

/// The normalised value of a control of any kind; 0 if it has no value.
float valueOf(IBWControl& control, const IParameterQuantizer& quantizer);

/// Sets a control of any kind without a notification. `stateCount` is the number of states of the value, for a control
/// with several states.
void setValueOf(IBWControl& control, float value, const IParameterQuantizer& quantizer, std::uint64_t stateCount);

/// The control's own number of states; 0 if it is of another kind.
std::uint64_t stateCountOf(IBWControl& control);

}  // namespace tesh::bramel
