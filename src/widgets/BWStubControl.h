// Controls without a component, for parameters that the panel shows in another way.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "widgets/ControlBase.h"

namespace tesh::bramel {

/// A control with only a listener and properties.
class BWStubControl : public ControlBase<IBWControl> {};

/// A control with several states. `setState` stores any state.
class BWStubSwitch : public ControlBase<IBWMultiStateControl> {
 public:
  void setStateCount(std::uint64_t count) { stateCount = count; }
  std::uint64_t getStateCount() const override { return stateCount; }
  std::uint64_t getState() const override { return state; }
  void setState(std::uint64_t newState) override { state = newState; }

 private:
  std::uint64_t stateCount = 0;
  std::uint64_t state = 0;
};

}  // namespace tesh::bramel
