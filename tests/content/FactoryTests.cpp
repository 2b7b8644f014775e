// The installed factory content: the processor loads it, and every kit sounds as its text says.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <sstream>

#include "content/Files.h"
#include "content/factory/Bank.h"
#include "content/factory/Controllers.h"
#include "content/factory/MacroFiles.h"
#include "content/measure/KitSound.h"
#include "content/waves/FactoryWaves.h"
#include "engine/ProgramBank.h"
#include "engine/SivrayPlugin.h"
#include "host/shell/Construction.h"
#include "support/Scratch.h"

namespace sivray::content {
namespace {

namespace engine = tesh::bramel::plugin::sivray;

class Factory : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(std::filesystem::exists(pathOf(description("readme.json"))))
        << "no content in " << SIVRAY_CONTENT_FOLDER << ": build the target 'content' of the release preset first";
    ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);
    ::setenv("BRAMEL_DOCUMENTS", scratch.path().c_str(), 1);  // Without a user's programs.
  }

  const support::Scratch scratch;

  static std::string description(const std::string& file) {
    return std::string(SIVRAY_CONTENT_FOLDER "/Tesh/Bramel/Macro/Sivray/") + file;
  }

  static engine::ProgramBankRecord liveRecord(KitMeter& meter) {
    engine::ProgramBankImage image;
    const auto state = meter.instrument().generator().getState();
    EXPECT_EQ(state.size(), sizeof(image));
    std::memcpy(static_cast<void*>(&image), state.data(), sizeof(image));
    return image.editBuffer;
  }
};

/// Kits set the engine's integers in two ways, by macros and by the engine's own chunk. Both must agree.
TEST_F(Factory, ProgramsReachTheEngineAsTheKitsSay) {
  KitMeter meter;
  const auto& controller = meter.instrument().controller();
  const auto bytes = readFile(description("plugin_chunk.bin"));
  engine::ProgramBankImage image;
  ASSERT_EQ(bytes.size(), sizeof(image));
  std::memcpy(static_cast<void*>(&image), bytes.data(), sizeof(image));
  ASSERT_EQ(controller.macroCount(), 133U);
  ASSERT_GE(controller.programs().programCount(tesh::vimo::Bank::factory), 64U);

  std::set<std::string> names;
  for (std::size_t program = 0; program < controller.programs().programCount(tesh::vimo::Bank::factory); ++program) {
    const auto entries = controller.programs().database(tesh::vimo::Bank::factory)->entries(program);
    ASSERT_EQ(entries.size(), controller.macroCount());
    for (const auto& entry : entries) {
      EXPECT_TRUE(entry.value >= 0.0F && entry.value <= 1.0F);
    }
    meter.select(program);
    const engine::ProgramBankRecord live = liveRecord(meter);
    const engine::ProgramBankRecord& written = image.programs[program];
    const std::string name = controller.programs().database(tesh::vimo::Bank::factory)->name(program);
    EXPECT_TRUE(live.pads == written.pads) << name;
    EXPECT_TRUE(live.effect == written.effect) << name;
    EXPECT_EQ(live.master, written.master) << name;
    EXPECT_EQ(std::string(written.name.data()), name);
    EXPECT_LE(name.size(), 24U);
    EXPECT_FALSE(controller.programs().database(tesh::vimo::Bank::factory)->comment(program).empty());
    EXPECT_TRUE(names.insert(name).second) << name;
  }
}

TEST_F(Factory, ComesUpWithItsFirstProgramBeforeTheFirstBlock) {
  const auto processor = tesh::bramel::vst::makeProcessor();
  auto& controller = processor->controller();
  EXPECT_EQ(controller.programName(), controller.programs().database(tesh::vimo::Bank::factory)->name(0));
  for (std::size_t i = 0; i < controller.macroCount(); ++i) {
    EXPECT_EQ(controller.macroValue(i), controller.programs().database(tesh::vimo::Bank::factory)->entries(0)[i].value);
  }
  EXPECT_TRUE(processor->running);
  EXPECT_FALSE(processor->storeEngineChunk);
  EXPECT_EQ(controller.stepCount(factory::kEffectTypeMacro), 26U);
  EXPECT_EQ(controller.stepCount(factory::kExclusiveGroup), 3U);
  EXPECT_EQ(controller.stepCount(factory::kPan), 127U);
  EXPECT_EQ(controller.stepCount(factory::kSample),
            static_cast<std::uint64_t>(processor->generator().sampleLibrary()->waveCount()));
  EXPECT_EQ(controller.automationBlacklist.size(), 24U);
  for (const std::uint64_t hidden : controller.automationBlacklist) {
    EXPECT_GE(hidden, factory::kHiddenPadMacros);
  }
}

/// A setting without an entry gets the engine's default, except the groups, which a new engine sets for every pad, and
/// the effect.
TEST_F(Factory, DefaultsAreThoseOfTheEngine) {
  KitMeter meter;
  auto& processor = meter.instrument();
  const engine::SivrayPlugin<engine::VstXSynth> fresh;
  const auto layout =
      factory::makeMacroLayout(static_cast<std::size_t>(processor.generator().sampleLibrary()->waveCount()));
  for (std::size_t i = 0; i < layout.size(); ++i) {
    const std::uint32_t target = layout[i].targetId;
    const bool isGroup = i < factory::kEffectTypeMacro && i % factory::kMacrosPerPad == factory::kExclusiveGroup;
    const bool isEffect = i >= factory::kEffectTypeMacro && i <= factory::kEffectEdit2Macro;
    meter.setMacro(i, processor.controller().macroDefault(i));
    if (!isGroup && !isEffect) {
      EXPECT_EQ(processor.generator().getParameter(target), fresh.getParameter(target)) << layout[i].name;
    }
  }
}

TEST_F(Factory, ControllersMoveWhatTheySay) {
  const auto processor = tesh::bramel::vst::makeProcessor();
  const auto& controller = processor->controller();
  for (std::uint8_t pad = 0; pad < factory::kPads; ++pad) {
    const auto macro = [pad](factory::PadMacro offset) {
      return static_cast<std::int64_t>(pad * factory::kMacrosPerPad + offset);
    };
    EXPECT_EQ(controller.macroForController(static_cast<std::uint8_t>(20 + pad)), macro(factory::kLevel));
    EXPECT_EQ(controller.macroForController(static_cast<std::uint8_t>(110 + pad)), macro(factory::kPan));
  }
  EXPECT_EQ(controller.macroForController(7), 99);
  EXPECT_EQ(controller.macroForPitchBend(), 64);
  for (const int channelMode : {120, 121, 123, 126}) {
    EXPECT_FALSE(controller.hasController(static_cast<std::uint8_t>(channelMode)));
  }
  EXPECT_EQ(controller.nativeModeMap.devices.at(2).size(), 40U);
  EXPECT_EQ(controller.nativeModeMap.devices.at(10).size(), 48U);
  EXPECT_EQ(controller.nativeModeMap.layoutType, 1U);
}

TEST_F(Factory, KitsKeepTheirRules) {
  KitMeter meter;
  EXPECT_GE(meter.programCount(), 96U);
  std::vector<KitSound> kits;
  for (std::size_t program = 0; program < meter.programCount(); program += SIVRAY_KIT_STRIDE) {
    kits.push_back(soundOf(meter, program));
  }
  std::ostringstream report;
  EXPECT_EQ(printKits(report, kits), 0) << report.str() << "run sivray-content balance after a change of waves";
}

/// Kits differ in more than their waves: pads are tuned, shortened, sharpened, darkened and reversed.
TEST_F(Factory, KitsUseWhatPadsCanDo) {
  int pitch = 0, decay = 0, punch = 0, boost = 0, reverse = 0;
  for (const auto& [file, kit] : factory::readBank(SIVRAY_KITS_FOLDER)) {
    EXPECT_EQ(kit.pads[factory::kBentPad].pitch, 0) << file << ": the bend wheel at rest would move it";
    for (const factory::KitPad& pad : kit.pads) {
      pitch += pad.pitch != 0 ? 1 : 0;
      decay += pad.decay != 127 ? 1 : 0;
      punch += pad.punch != 0 ? 1 : 0;
      boost += pad.boost != 43 ? 1 : 0;
      reverse += pad.reverse ? 1 : 0;
    }
  }
  EXPECT_GE(pitch, 100);
  EXPECT_GE(decay, 80);
  EXPECT_GE(punch, 60);
  EXPECT_GE(boost, 40);
  EXPECT_GE(reverse, 12);
}

TEST_F(Factory, EveryWaveIsInAKit) {
  std::set<std::string> unused;
  for (const FactoryRow& row : readFactoryRows(SIVRAY_WAVE_TABLES)) {
    unused.insert(row.row.name);
  }
  for (const auto& [file, kit] : factory::readBank(SIVRAY_KITS_FOLDER)) {
    for (const factory::KitPad& pad : kit.pads) {
      unused.erase(pad.wave);
    }
  }
  EXPECT_TRUE(unused.empty()) << unused.size() << " waves are in no kit, such as " << *unused.begin();
}

TEST_F(Factory, HatsOfOneKitExcludeEachOtherAndNothingElseDoes) {
  std::map<std::string, std::string_view> categories;
  for (const FactoryRow& row : readFactoryRows(SIVRAY_WAVE_TABLES)) {
    categories[row.row.name] = kCategoryNames[static_cast<std::size_t>(row.category)];
  }
  for (const factory::BankKit& entry : factory::readBank(SIVRAY_KITS_FOLDER)) {
    const std::string& file = entry.file;
    const factory::Kit& kit = entry.kit;
    const auto count = [&](std::string_view category) {
      return std::ranges::count_if(kit.pads,
                                   [&](const factory::KitPad& pad) { return categories[pad.wave] == category; });
    };
    const bool areHats = count("Close HH") > 0 && count("Open HH") > 0;
    for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
      const std::string_view category = categories[kit.pads[pad].wave];
      const bool isGrouped = kit.pads[pad].group != factory::ExclusiveGroup::off;
      EXPECT_EQ(isGrouped, areHats && (category == "Close HH" || category == "Open HH")) << file << ", pad " << pad;
    }
    EXPECT_EQ(kit.pads[0].pan, 0) << file;
    EXPECT_EQ(kit.pads[2].pan, 0) << file;
  }
}

}  // namespace
}  // namespace sivray::content
