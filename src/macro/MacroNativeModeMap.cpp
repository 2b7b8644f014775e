// The table of hardware devices, and the reading of the map's file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroNativeModeMap.h"

#include <array>
#include <limits>
#include <string>

namespace tesh::vimo::midi_controller {
namespace {

constexpr std::array<Device, 12> kDevices{{{"Ormel Tap", false, 0},
                                           {"Ormel Pad", false, 0},
                                           {"Ormel Mixer", true, 40},
                                           {"Ormel Deck", false, 0},
                                           {"Ormel Deck Pro", false, 0},
                                           {"Ormel Slim", false, 0},
                                           {"Ormel Slim 25", false, 0},
                                           {"Ormel Slim Wave", false, 0},
                                           {"Ormel Slim 25 Wave", false, 0},
                                           {"Ormel Tap Room", true, 15},
                                           {"Ormel Mixer Room", true, 48},
                                           {"Ormel Bench", true, 15}}};

/// A keyword's layout type is its position here, counted from 1.
constexpr std::array<std::string_view, 5> kLayouts{"Drum", "DrumVarnel", "Sarbo", "SynthTelmar", "DrumOskin"};

std::uint32_t layoutTypeOf(std::string_view keyword) {
  for (std::uint32_t i = 0; i < kLayouts.size(); ++i) {
    if (kLayouts[i] == keyword) {
      return i + 1;
    }
  }
  return 0;
}

}  // namespace

Device deviceAt(std::uint32_t index) {
  return index < kDevices.size() ? kDevices[index] : Device{"Unknown Device", false, 0};
}

void MacroNativeModeMap::read(const picojson::value& file) {
  const auto& object = memberOf(file, "native_mode_map").get<picojson::object>();
  devices.clear();
  for (std::uint32_t index = 0; index < kDevices.size(); ++index) {
    const Device device = kDevices[index];
    const auto found = object.find(device.name);
    if (!device.enabled || found == object.end() || !found->second.is<picojson::object>()) {
      continue;
    }
    auto& controls = devices[index];
    const picojson::value& type = memberOf(found->second, "Type");
    layoutType = type.is<std::string>() ? layoutTypeOf(type.get<std::string>()) : 0;
    for (std::uint32_t control = 0; control < device.controls; ++control) {
      const auto macro = roundedNumber(memberOf(found->second, std::to_string(control)));
      if (macro && *macro >= 0 && *macro <= std::numeric_limits<std::int32_t>::max()) {
        controls[control] = static_cast<std::uint32_t>(*macro);
      }
    }
  }
}

}  // namespace tesh::vimo::midi_controller
