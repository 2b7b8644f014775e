// The description and both maps: the effect of each member, ignored members, and the errors with their texts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroDescription.h"

#include <gtest/gtest.h>

#include "MacroScene.h"
#include "macro/Json.h"

namespace tesh::vimo {
namespace {

constexpr const char* kMismatch = "\"type mismatch! call is<type>() before get<type>()\" && is<";

Bytes bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

/// Loads a description whose "processor" has these members and empty chunks, onto a list of three macros.
void load(Scene& scene, const std::string& members, const std::map<std::string, Bytes>& files = {}) {
  const DescriptionSource source{[&files](const std::string& name) -> std::optional<Bytes> {
                                   const auto found = files.find(name);
                                   return found == files.end() ? std::nullopt : std::optional(found->second);
                                 },
                                 "", "", ""};
  if (scene.controller().macroCount() == 0) {
    scene.addMacros(3);
  }
  const std::string text = R"({"controller": 1, "processor": {"plugin_chunk": "", "macro_chunk": "")" + members + "}}";
  loadDescription(bytesOf(text), source, *scene.processor, Parts::all);
}

std::string failure(const std::string& text) {
  Scene scene;
  try {
    loadDescription(bytesOf(text), {[](const std::string&) { return std::nullopt; }, "", "", ""}, *scene.processor,
                    Parts::all);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "none";
}

TEST(MacroDescription, FailsWithTheLibrarysText) {
  const std::string object = std::string(kMismatch) + "object>()";
  const std::string string = std::string(kMismatch) + "std::string>()";
  const std::string array = std::string(kMismatch) + "array>()";
  for (const char* text : {"", "{", "[]", "1", "{}", R"({"processor": 1})", "1e999"}) {
    EXPECT_EQ(failure(text), object) << text;
  }
  EXPECT_EQ(failure(R"({"processor": {}})"), string);
  EXPECT_EQ(failure(R"({"processor": {"plugin_chunk": "", "macro_chunk": 1}})"), string);
  EXPECT_EQ(failure(R"({"processor": {"plugin_chunk": "x", "macro_chunk": "y", "patches": ""}})"), array);
  EXPECT_EQ(failure(R"({"processor": {"plugin_chunk": "x", "macro_chunk": "y", "patches": [1]}})"), string);
  EXPECT_EQ(failure(R"({"processor": {"plugin_chunk": "x", "macro_chunk": "y"}} tail)"), "none");
  EXPECT_EQ(failure(std::string(5000, '[')), object);
}

TEST(MacroDescription, ExpressionsReplaceThoseOfTheirMacro) {
  Scene scene;
  scene.addMacros(3);
  scene.macro(1).expressions = {"old"};
  load(scene, R"(, "parameter_expressions": {"indice": [1]})");
  EXPECT_EQ(scene.macro(1).expressions, std::vector<std::string>{"old"});
  load(scene,
       R"(, "parameter_expressions": {"indice": [0.6, 7, -2], "parameters": [["a", "b"], ["c"], ["d"], ["e"]]})");
  EXPECT_EQ(scene.macro(1).expressions, (std::vector<std::string>{"a", "b"}));
}

TEST(MacroDescription, TheBlacklistIsReplacedByAListOnly) {
  Scene scene;
  load(scene, R"(, "automation": {"blacklist": [1.4, 2.6]})");
  EXPECT_EQ(scene.controller().automationBlacklist, (std::vector<std::uint64_t>{1, 3}));
  load(scene, R"(, "automation": {"blacklist": 5})");
  EXPECT_TRUE(scene.controller().isHidden(3));
  load(scene, R"(, "automation": {"blacklist": []})");
  EXPECT_FALSE(scene.controller().isHidden(3));
}

TEST(MacroDescription, DefaultsGoToMacrosOfTheList) {
  Scene scene;
  load(scene, R"(, "parameter_description": "d", "misc_chunk": "none", "patches": [])",
       {{"d", bytesOf(R"({"parameters": [[2.9, 0.5, 7], [3, 0.5], [-1, 1], [0, 0.25], [1]]})")}});
  EXPECT_EQ(scene.controller().macroDefault(0), 0.25F);
  EXPECT_EQ(scene.controller().macroDefault(1), 0.0F);
  EXPECT_EQ(scene.controller().macroDefault(2), 0.5F);
  load(scene, R"(, "parameter_description": "absent", "patches": [""])");
}

TEST(MacroDescription, FilesAreReadInTheirOrder) {
  Scene writer;
  writer.addMacros(2);
  writer.store("Kit", {0.5F, 0.25F});
  Bytes chunk;
  writer.controller().writeChunk(chunk);
  const std::map<std::string, Bytes> files{{"engine", {9, 9}}, {"macros", chunk}};
  Scene scene;
  scene.addMacros(3);
  const std::string text = R"({"processor": {"plugin_chunk": "engine", "macro_chunk": "macros",
                               "automation": {"blacklist": [1]}}})";
  const DescriptionSource source{[&files](const std::string& name) { return std::optional(files.at(name)); }, "", "",
                                 ""};
  loadDescription(bytesOf(text), source, *scene.processor, Parts::valuesOnly);
  EXPECT_EQ(scene.controller().macroCount(), 3U);
  EXPECT_EQ(scene.controller().macroValue(0), 0.5F);
  EXPECT_TRUE(scene.controller().automationBlacklist.empty());
  loadDescription(bytesOf(text), source, *scene.processor, Parts::all);
  EXPECT_EQ(scene.controller().macroCount(), 2U);
  EXPECT_EQ(scene.controller().programs().programCount(Bank::factory), 1U);
  EXPECT_TRUE(scene.controller().isHidden(1));
  EXPECT_EQ(scene.generator->state, (Bytes{9, 9}));
  EXPECT_EQ(scene.generator->log, "ss");
}

TEST(CcMap, MapsControllersAndPitchBend) {
  Scene scene;
  auto& controller = scene.controller();
  controller.readCcMap(
      bytesOf(R"({"cc_map": {"0": 3, "7": 4.6, "126": 4, "127": 9, "07": 1, "9": "x"}, "pitch_bend": 12})"));
  EXPECT_EQ(controller.ccMap, (std::map<std::uint8_t, std::uint64_t>{{0, 3}, {7, 5}, {126, 4}, {224, 12}}));
  EXPECT_EQ(controller.macroForController(7), 5);
  EXPECT_EQ(controller.macroForController(127), -1);
  EXPECT_FALSE(controller.hasController(9));
  EXPECT_EQ(controller.macroForPitchBend(), 12);
  controller.readCcMap(bytesOf(R"({"cc_map": {"1": 5, "2": 5}, "pitch_bend": null})"));
  EXPECT_FALSE(controller.hasPitchBend());
  EXPECT_EQ(controller.macroForPitchBend(), -1);
  EXPECT_EQ(controller.ccMap.size(), 2U);
  EXPECT_THROW(controller.readCcMap(bytesOf("[]")), std::runtime_error);
  EXPECT_THROW(controller.readCcMap(bytesOf(R"({"cc_map")")), std::runtime_error);
  controller.loadCcMap("/nowhere/at/all.ccmap");
  EXPECT_TRUE(controller.ccMap.empty());
}

TEST(NativeModeMap, ReadsEnabledDevicesOnly) {
  midi_controller::MacroNativeModeMap map;
  map.read(parseJson(bytesOf(R"({"native_mode_map": {
      "Ormel Tap": {"0": 1},
      "Ormel Mixer": {"Type": "Sarbo", "0": 5, "39": 7.5, "40": 1, "2": -1, "3": "x", "4": -0.4},
      "Ormel Mixer Room": 3,
      "Ormel Bench": {"Type": "unheard", "14": 2, "15": 2}}})")));
  using Controls = std::map<std::uint32_t, std::uint32_t>;
  EXPECT_EQ(map.devices, (std::map<std::uint32_t, Controls>{{2, {{0, 5}, {4, 0}, {39, 8}}}, {11, {{14, 2}}}}));
  EXPECT_EQ(map.layoutType, 0U);
  map.read(parseJson(bytesOf(R"({"native_mode_map": {"Ormel Tap Room": {"Type": "DrumOskin"}}})")));
  EXPECT_EQ(map.layoutType, 5U);
  EXPECT_STREQ(midi_controller::deviceAt(12).name, "Unknown Device");
}

}  // namespace
}  // namespace tesh::vimo
