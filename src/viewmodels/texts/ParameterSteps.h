// Conversions between a normalised value and the integer state of a stepped control. Any thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel {

/// The state nearest to `value`, of `stateCount` (at least 1) states from `offset` on. NaN counts as 0; a value outside
/// 0 to 1 gives the first or the last state.
std::int32_t quantizeValue(float value, std::int32_t stateCount, std::int32_t offset);

/// The normalised value of a state. A state out of range counts as the first or the last. 0 if there is only one state.
float normaliseState(std::int32_t state, std::int32_t stateCount, std::int32_t offset);

/// The region that contains `value`, of `stateCount` regions of equal width between 0 and 1, numbered from `offset`.
/// Values outside are treated as in `quantizeValue`.
std::int32_t truncateValue(float value, std::int32_t stateCount, std::int32_t offset);

/// The conversions that a stepped control uses. States count from 0.
class IParameterQuantizer {
 public:
  virtual ~IParameterQuantizer() = default;
  virtual std::int64_t valueToState(float value, std::uint64_t stateCount) const = 0;
  virtual float stateToValue(std::int64_t state, std::uint64_t stateCount) const = 0;
};

/// The quantizer of controls that are bound to a parameter: the functions above.
class CParameterQuantizer : public IParameterQuantizer {
 public:
  std::int64_t valueToState(float value, std::uint64_t stateCount) const override;
  float stateToValue(std::int64_t state, std::uint64_t stateCount) const override;
};

/// The quantizer of controls without a parameter. It rounds up earlier: of n states, the boundary between states k and
/// k + 1 is at (k + 0.25) / (n - 1).
class NormalParameterQuantizer : public IParameterQuantizer {
 public:
  std::int64_t valueToState(float value, std::uint64_t stateCount) const override;
  float stateToValue(std::int64_t state, std::uint64_t stateCount) const override;
};

}  // namespace tesh::bramel
