// The places of all parameter groups, and the id that names a parameter across them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

inline constexpr std::uint32_t kGroupPlaces = 35;

/// Ids run from 0 to kParameterIds - 1, with holes.
inline constexpr std::uint32_t kParameterIds = kGroupPlaces << 4;

constexpr std::uint32_t parameterId(std::uint32_t group, std::uint32_t index) { return (group << 4) | index; }

/// 35 places, each empty or a group that somebody else owns.
class ParameterGroupTable {
 public:
  void set(std::uint32_t place, IParameter* group) { groups[place] = group; }

  /// The group of an id, or null for an empty place and an id past the table.
  IParameter* groupOf(std::uint32_t id) const { return (id >> 4) < kGroupPlaces ? groups[id >> 4] : nullptr; }

  /// The index of an id in its group.
  static int indexOf(std::uint32_t id) { return static_cast<int>(id & 15); }

 private:
  std::array<IParameter*, kGroupPlaces> groups{};
};

}  // namespace tesh::bramel::plugin::sivray
