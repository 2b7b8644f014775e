// The step functions between a normalised value and the whole-numbered state of a stepped control. Pure functions,
// callable on any thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel {

/// The state nearest to `value` (0 to 1) of `stateCount` states, counted from `offset`. NaN counts as 0; values outside
/// 0 to 1 give the first or the last state.
std::int32_t quantizeValue(float value, std::int32_t stateCount, std::int32_t offset);

/// The normalised value of a state; states outside the range are held to it. One state alone gives 0.
float normaliseState(std::int32_t state, std::int32_t stateCount, std::int32_t offset);

/// The index of the region that `value` falls into when 0 to 1 is cut into `stateCount` regions of equal width.
std::int32_t truncateValue(float value, std::int32_t stateCount, std::int32_t offset);

/// What a stepped control asks.
class IParameterQuantizer {
 public:
  virtual ~IParameterQuantizer() = default;
  virtual std::int64_t valueToState(float value, std::uint64_t stateCount) const = 0;
  virtual float stateToValue(std::int64_t state, std::uint64_t stateCount) const = 0;
};

/// The quantizer of every control that a parameter is bound to: the step functions above.
class CParameterQuantizer : public IParameterQuantizer {
 public:
  std::int64_t valueToState(float value, std::uint64_t stateCount) const override;
  float stateToValue(std::int64_t state, std::uint64_t stateCount) const override;
};

/// The quantizer of a control that no parameter is bound to. It rounds otherwise: the boundary between the states k and
/// k + 1 lies at k + 0.25 of the last state.
class NormalParameterQuantizer : public IParameterQuantizer {
 public:
  std::int64_t valueToState(float value, std::uint64_t stateCount) const override;
  float stateToValue(std::int64_t state, std::uint64_t stateCount) const override;
};

}  // namespace tesh::bramel
