// A parameter write on its way to the block.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::vimo {

/// A random UUID, by which writes of the host and of the editor differ.
using SourceId = std::array<std::uint8_t, 16>;

/// The type of an event's value.
enum class ProcessorEventTag : std::uint32_t {
  floatValue = 0x23333266,   ///< "#23f"
  integerValue = 0x23343675  ///< "#46u"
};

/// Copying it allocates nothing.
struct ProcessorEvent {
  SourceId source{};
  ProcessorEventTag tag = ProcessorEventTag::floatValue;
  std::uint64_t parameterId = 0;
  float value = 0.0F;         ///< With floatValue: normalised, 0 to 1.
  std::uint64_t integer = 0;  ///< With integerValue.
};

}  // namespace tesh::vimo
