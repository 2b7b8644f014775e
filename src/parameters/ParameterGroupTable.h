// The table of all parameter groups, by which the group of a parameter id is found.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "parameters/IParameter.h"
#include "parameters/ParameterIds.h"

namespace tesh::bramel::plugin::sivray {

/// One entry per group number: null, or a group that is owned elsewhere.
class ParameterGroupTable {
 public:
  /// `number` must be below kGroupCount.
  void set(std::uint32_t number, IParameter* group) { groups[number] = group; }

  /// The group of an id; null if there is none, or if the id is past the table. Any thread.
  IParameter* groupOf(std::uint32_t id) const { return id < kParameterIds ? groups[parameterGroup(id)] : nullptr; }

 private:
  std::array<IParameter*, kGroupCount> groups{};
};

}  // namespace tesh::bramel::plugin::sivray
