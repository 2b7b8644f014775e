// Looks up controls, and reads and writes the value of each kind of control.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/ControlTable.h"

#include <utility>

#include "widgets/PropertyKeys.h"

namespace tesh::bramel {

void ControlTable::set(std::uint64_t index, std::shared_ptr<IBWControl> control) {
  if (index < controls.size()) {
    controls[static_cast<std::size_t>(index)] = std::move(control);
  }
}

IBWControl* ControlTable::at(std::uint64_t index) const {
  return index < controls.size() ? controls[static_cast<std::size_t>(index)].get() : nullptr;
}

std::optional<std::uint64_t> parameterOf(const IBWControl& control) {
  return property<std::uint64_t>(control, keys::kIndex);
}

float valueOf(IBWControl& control, const IParameterQuantizer& quantizer) {
  if (const auto* const twoState = control.asTwoState()) {
    return twoState->getState() ? 1.0F : 0.0F;
  }
  if (const auto* const multiState = control.asMultiState()) {
    return quantizer.stateToValue(static_cast<std::int64_t>(multiState->getState()), multiState->getStateCount());
  }
  const auto* const continuous = control.asContinuous();
  return continuous != nullptr ? continuous->getValue() : 0.0F;
}

void setValueOf(IBWControl& control, float value, const IParameterQuantizer& quantizer, std::uint64_t stateCount) {
  if (auto* const twoState = control.asTwoState()) {
    twoState->setState(value >= 0.5F);
  } else if (auto* const multiState = control.asMultiState()) {
    multiState->setState(static_cast<std::uint64_t>(quantizer.valueToState(value, stateCount)));
  } else if (auto* const continuous = control.asContinuous()) {
    continuous->setValue(value);
  }
}

std::uint64_t stateCountOf(IBWControl& control) {
  const auto* const multiState = control.asMultiState();
  return multiState != nullptr ? multiState->getStateCount() : 0;
}

}  // namespace tesh::bramel
