// The JSON files of the macro description: the description itself, the defaults, and the controller maps.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <picojson.h>

#include "content/factory/Controllers.h"
#include "content/factory/MacroFiles.h"

namespace sivray::factory {
namespace {

picojson::value number(std::size_t value) { return picojson::value(static_cast<double>(value)); }

/// Returns the object as indented JSON.
std::string textOf(const picojson::object& root) { return picojson::value(root).serialize(true); }

/// The macro of each of a device's controls, from control 0 on: rows of eight for the pads, then single macros.
struct DeviceLayout {
  const char* device;
  std::vector<PadMacro> rows;
  std::vector<std::size_t> singles;
};

const std::vector<DeviceLayout>& deviceLayouts() {
  static const std::vector<std::size_t> master{kEffectTypeMacro, kEffectEdit1Macro, kEffectEdit2Macro,
                                               kMasterLevelMacro, kEffectSwitchMacro};
  static const std::vector<DeviceLayout> layouts{
      {"Ormel Mixer", {kLevel, kPan, kPitch, kEnvelopeTime, kEffectSend}, {}},
      {"Ormel Mixer Room", {kLevel, kPan, kPitch, kEnvelopeTime, kEffectSend, kMute}, {}},
      {"Ormel Tap Room", {kLevel}, master},
      {"Ormel Bench", {kLevel}, master},
  };
  return layouts;
}

picojson::value layoutValue(const DeviceLayout& layout) {
  picojson::object controls;
  std::size_t control = 0;
  const auto add = [&](std::size_t macro) { controls[std::to_string(control++)] = number(macro); };
  for (const PadMacro row : layout.rows) {
    for (std::size_t pad = 0; pad < kPads; ++pad) {
      add(pad * kMacrosPerPad + row);
    }
  }
  for (const std::size_t macro : layout.singles) {
    add(macro);
  }
  controls["Type"] = picojson::value("Drum");
  return picojson::value(controls);
}

}  // namespace

std::string makeReadme(const FactoryBank& bank) {
  picojson::array hidden;
  for (std::size_t i = 0; i < bank.layout.size(); ++i) {
    if (bank.layout[i].hidden) {
      hidden.push_back(number(i));
    }
  }
  picojson::object automation;
  automation["blacklist"] = picojson::value(hidden);
  picojson::object processor;
  processor["plugin_chunk"] = picojson::value("plugin_chunk.bin");
  processor["macro_chunk"] = picojson::value("macro_chunk.bin");
  processor["misc_chunk"] = picojson::value("misc_chunk.bin");
  processor["parameter_description"] = picojson::value("parameter_description.json");
  processor["cc_map"] = picojson::value("Sivray.ccmap");
  processor["native_mode_map"] = picojson::value("Sivray.native_mode_map");
  processor["automation"] = picojson::value(automation);
  processor["patches"] = picojson::value(picojson::array());
  picojson::object root;
  root["processor"] = picojson::value(processor);
  root["controller"] = picojson::value(picojson::object());
  return textOf(root);
}

std::string makeParameterDescription(const FactoryBank& bank) {
  picojson::array parameters;
  for (std::size_t i = 0; i < bank.layout.size(); ++i) {
    const auto value = static_cast<double>(bank.layout[i].defaultValue);
    parameters.emplace_back(picojson::array{number(i), picojson::value(value)});
  }
  picojson::object root;
  root["parameters"] = picojson::value(parameters);
  return textOf(root);
}

std::string makeCcMap() {
  picojson::object map;
  for (const auto& [first, macro] : kControllerRows) {
    for (std::size_t pad = 0; pad < kPads; ++pad) {
      map[std::to_string(first + static_cast<int>(pad))] = number(pad * kMacrosPerPad + macro);
    }
  }
  for (const auto& [controller, macro] : kControllerPlaces) {
    map[std::to_string(controller)] = number(macro);
  }
  picojson::object root;
  root["cc_map"] = picojson::value(map);
  root["pitch_bend"] = number(kBentPad * kMacrosPerPad + kPitch);
  return textOf(root);
}

std::string makeNativeModeMap() {
  picojson::object devices;
  for (const DeviceLayout& layout : deviceLayouts()) {
    devices[layout.device] = layoutValue(layout);
  }
  picojson::object root;
  root["native_mode_map"] = picojson::value(devices);
  return textOf(root);
}

}  // namespace sivray::factory
