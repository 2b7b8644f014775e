// The numbers of the engine's parameter groups, and the ids that identify a parameter among all groups.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::plugin::sivray {

inline constexpr std::uint32_t kFirstPadGroup = 0;     ///< One group per pad, 0 to 15.
inline constexpr std::uint32_t kEffectGroup = 16;      ///< Type, switch and knobs of the master effect.
inline constexpr std::uint32_t kMasterGroup = 17;      ///< The output stage.
inline constexpr std::uint32_t kGlobalGroup = 18;      ///< Tempo.
inline constexpr std::uint32_t kFirstMeterGroup = 19;  ///< The level meters of each pad, 19 to 34.
inline constexpr std::uint32_t kGroupCount = 35;

/// The low bits of an id, which hold the index in the group: a group has at most 16 parameters.
inline constexpr std::uint32_t kIndexBits = 4;

/// Ids are below this. Not every number below it is the id of a parameter.
inline constexpr std::uint32_t kParameterIds = kGroupCount << kIndexBits;

constexpr std::uint32_t parameterId(std::uint32_t group, std::uint32_t index) { return (group << kIndexBits) | index; }

constexpr std::uint32_t parameterGroup(std::uint32_t id) { return id >> kIndexBits; }

constexpr std::uint32_t parameterIndex(std::uint32_t id) { return id & ((1U << kIndexBits) - 1); }

}  // namespace tesh::bramel::plugin::sivray
