// Assigns macros to the controls of the family's own hardware. It is read, but this instrument does not use it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string_view>

#include "macro/Json.h"

namespace tesh::vimo::midi_controller {

/// A type of hardware.
struct Device {
  const char* name;        ///< Its key in the file.
  bool enabled;            ///< The loader looks for it.
  std::uint32_t controls;  ///< The number of controls that it reads.
};

/// The device at `index`, or "Unknown Device" past the table.
Device deviceAt(std::uint32_t index);

class MacroNativeModeMap {
 public:
  virtual ~MacroNativeModeMap() = default;

  /// Fills the map from a parsed file, which must be an object with the object "native_mode_map"; throws
  /// std::runtime_error otherwise.
  void read(const picojson::value& file);

  std::map<std::uint32_t, std::map<std::uint32_t, std::uint32_t>> devices;  ///< Device index, control, macro.
  std::uint32_t layoutType = 0;                                             ///< 0 to 5.
};

}  // namespace tesh::vimo::midi_controller
