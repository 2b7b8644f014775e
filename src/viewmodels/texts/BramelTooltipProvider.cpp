// Stores the last value of each parameter.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/texts/BramelTooltipProvider.h"

namespace tesh::bramel::tooltip {

std::string BramelTooltipProvider::getParameterName(std::uint64_t) { return {}; }

float BramelTooltipProvider::getValue(std::uint64_t index) {
  return index < values.size() ? values[static_cast<std::size_t>(index)] : 0.0F;
}

void BramelTooltipProvider::setValue(std::uint64_t index, float value) {
  if (index >= kLongestList) {
    return;
  }
  if (index >= values.size()) {
    cofu::core::vouchFor(
        [&] { values.resize(static_cast<std::size_t>(index) + 1); });  // Never allocates after `reserve`.
  }
  values[static_cast<std::size_t>(index)] = value;
}

}  // namespace tesh::bramel::tooltip
