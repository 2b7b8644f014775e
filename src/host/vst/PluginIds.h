// The unique ids of the family's plug-ins. An id never changes, since songs refer to the plug-in by it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

struct PluginId {
  std::string_view productName;
  std::int32_t id;
};

inline constexpr std::array kPluginIds{PluginId{"Sivray", fourCharacters('T', 'B', '1', '0')}};

/// Returns 0 for a product that is not in the table.
constexpr std::int32_t pluginIdOf(std::string_view productName) {
  for (const PluginId& row : kPluginIds) {
    if (row.productName == productName) {
      return row.id;
    }
  }
  return 0;
}

}  // namespace tesh::bramel::vst
