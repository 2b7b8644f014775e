// Conversions between normalised values and steps, in single precision.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/texts/ParameterSteps.h"

#include <algorithm>
#include <cmath>

#include "core/Truncate.h"

namespace tesh::bramel {

using cofu::core::truncateToInt;

std::int32_t quantizeValue(float value, std::int32_t stateCount, std::int32_t offset) {
  const std::int32_t last = stateCount - 1;
  const std::int32_t state = truncateToInt(static_cast<float>(last) * value + 0.5F);
  return state < 0 ? offset : std::min(state, last) + offset;
}

float normaliseState(std::int32_t state, std::int32_t stateCount, std::int32_t offset) {
  const std::int32_t last = stateCount - 1;
  if (last < 1) {
    return 0.0F;
  }
  return static_cast<float>(std::clamp(state - offset, 0, last)) / static_cast<float>(last);
}

std::int32_t truncateValue(float value, std::int32_t stateCount, std::int32_t offset) {
  const std::int32_t state = truncateToInt(static_cast<float>(stateCount) * value);
  return state < 0 ? offset : std::min(state, stateCount - 1) + offset;
}

std::int64_t CParameterQuantizer::valueToState(float value, std::uint64_t stateCount) const {
  return quantizeValue(value, static_cast<std::int32_t>(stateCount), 0);
}

float CParameterQuantizer::stateToValue(std::int64_t state, std::uint64_t stateCount) const {
  return normaliseState(static_cast<std::int32_t>(state), static_cast<std::int32_t>(stateCount), 0);
}

std::int64_t NormalParameterQuantizer::valueToState(float value, std::uint64_t stateCount) const {
  if (stateCount < 2) {
    return 0;
  }
  const float x = static_cast<float>(stateCount - 1) * value;
  const std::int32_t doubled = truncateToInt(std::round(2.0F * x));
  return (static_cast<std::int64_t>(doubled) + 1) >> 1;
}

float NormalParameterQuantizer::stateToValue(std::int64_t state, std::uint64_t stateCount) const {
  return stateCount < 2 ? 0.0F : static_cast<float>(state) / static_cast<float>(stateCount - 1);
}

}  // namespace tesh::bramel
