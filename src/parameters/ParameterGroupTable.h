// The places of all parameter groups, and the way from a parameter's id to its group.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "parameters/IParameter.h"
#include "parameters/ParameterIds.h"

namespace tesh::bramel::plugin::sivray {

/// A place for each group number. A place is empty, or holds a group that is owned elsewhere.
class ParameterGroupTable {
 public:
  /// `number` must be below kGroupCount.
  void set(std::uint32_t number, IParameter* group) { groups[number] = group; }

  /// The group of an id; null for an empty place and for an id past the table.
  IParameter* groupOf(std::uint32_t id) const { return id < kParameterIds ? groups[parameterGroup(id)] : nullptr; }

 private:
  std::array<IParameter*, kGroupCount> groups{};
};

}  // namespace tesh::bramel::plugin::sivray
