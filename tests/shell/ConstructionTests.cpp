// Construction of the whole processor from a folder of files: order, initial state, missing files.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/Construction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "core/LittleEndian.h"
#include "storage/paths/Paths.h"
#include "storage/programs/UserProgramFile.h"
#include "support/Scratch.h"

namespace tesh::bramel::vst {
namespace {

using cofu::core::ByteWriter;
using support::writeFile;
using Bytes = std::vector<std::uint8_t>;
using Processor = vimo::PluginMacroControllable<vimo::Generator<float>>;
namespace fs = std::filesystem;

constexpr std::uint32_t kPadLevel = 8;

class Construction : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(userFolder);
    setenv("BRAMEL_COMMON_FILES", root.path("common").c_str(), 1);
    setenv("BRAMEL_DOCUMENTS", root.path("documents").c_str(), 1);
    writeFile(macroFolder / "readme.json", R"({"controller": {}, "processor": {
        "plugin_chunk": "", "macro_chunk": "macros.bin", "cc_map": "any", "misc_chunk": "absent",
        "parameter_description": "defaults.json", "automation": {"blacklist": [1]}, "patches": []}})");
    writeFile(macroFolder / "macros.bin", macroChunk());
    writeFile(macroFolder / "defaults.json", R"({"parameters": [[1, 0.125]]})");
    writeFile(macroFolder / "Sivray.ccmap", R"({"cc_map": {"7": 1}})");
  }

  /// Returns a chunk with two macros, the first on pad 0's level, and one factory program that sets them to 1 and 0.5.
  static Bytes macroChunk() {
    Bytes records;
    ByteWriter record(records);
    record.text("Level");
    record.zeros(27);
    record.word(kPadLevel);
    record.real(0.0F);
    record.real(1.0F);
    record.zeros(32);
    Bytes chunk;
    ByteWriter writer(chunk);
    for (const std::uint32_t word : {512U, 2U, 12U + 76U, 8U + 8U, 0U, 0U, 2U, 44U, 32U}) {
      writer.word(word);
    }
    writer.bytes(records);
    for (const std::uint32_t word : {256U, 1U}) {
      writer.word(word);
    }
    for (const float value : {1.0F, 0.5F, 0.25F, 0.75F}) {
      writer.real(value);
    }
    return chunk;
  }

  const support::Scratch root;
  const fs::path macroFolder = root / "common/Tesh/Bramel/Macro/Sivray";
  const fs::path userFolder = root / "documents/Tesh Bramel/User Programs";
};

/// Renders a silent block, which applies pending changes.
void runBlock(Processor& processor) {
  std::vector<float> samples(64);
  float* outputs[2] = {samples.data(), samples.data()};
  vimo::TimedValueRing automation(4096);
  vimo::TimedValueRing echoes(1024);
  std::vector<vimo::MidiEvent> midi;
  vimo::ProcessBlock block;
  block.outputs = outputs;
  block.frames = 64;
  block.automationRing = &automation;
  block.notificationRing = &echoes;
  block.midiIn = &midi;
  block.midiOut = &midi;
  processor.process(block, 0, 1.0, 0.0);
}

TEST_F(Construction, ComesUpWithTheFirstProgramInItsFirstBlock) {
  const auto processor = makeProcessor();
  auto& controller = processor->controller();
  EXPECT_EQ(processor->instrumentName(), "Sivray");
  EXPECT_EQ(controller.macroCount(), 2U);
  EXPECT_EQ(controller.macroDefault(1), 0.125F);
  EXPECT_EQ(controller.macroForController(7), 1);
  EXPECT_TRUE(controller.isHidden(1));
  EXPECT_EQ(controller.macroValue(0), 0.25F);
  EXPECT_EQ(controller.stepCount(0), 128U);
  EXPECT_NE(processor->generator().sampleLibrary(), nullptr);
  EXPECT_NE(processor->programQueue.peek(), nullptr);

  controller.programs().setSelection(1, vimo::Bank::factory);
  runBlock(*processor);
  EXPECT_EQ(processor->programQueue.peek(), nullptr);
  EXPECT_EQ(controller.programName(), "0");
  EXPECT_EQ(controller.macroValue(0), 1.0F);
  EXPECT_EQ(processor->generator().getParameter(kPadLevel), 1.0F);
}

TEST_F(Construction, ReadsUserProgramsOfBothHeads) {
  for (const std::uint32_t version : {512U, 1024U}) {
    Bytes file;
    ByteWriter writer(file);
    for (const std::uint32_t word : {version, 1U, 16U, 4U}) {
      writer.word(word);
    }
    writer.zeros(version == 512 ? 0 : 4);
    for (const std::uint32_t word : {256U, 2U, 0U, 0x3F000000U}) {
      writer.word(word);
    }
    writeFile(userFolder / "Sivray_User.prog", file);
    const auto processor = makeProcessor();
    ASSERT_EQ(processor->controller().programs().programCount(vimo::Bank::user), 2U) << version;
    const auto entries = processor->controller().programs().database(vimo::Bank::user)->entries(1);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].value, 0.5F);
    EXPECT_EQ(entries[1].value, 0.125F);
  }
}

TEST_F(Construction, TakesTheUsersControllerMapIfItCanBeReadAndElseTheFactorys) {
  std::string file = pathFor(kBramelPath_UserCCMap, "Sivray");
  std::replace(file.begin(), file.end(), '\\', '/');
  fs::create_directories(fs::path(file).parent_path());
  for (const auto& [text, macro] : std::vector<std::pair<std::string, std::int64_t>>{
           {R"({"cc_map": {"7": 0}})", 0}, {"", 1}, {R"({"cc_map": {"7")", 1}, {"[]", 1}, {"{}", 1}}) {
    writeFile(file, text);
    ASSERT_TRUE(fileExists(file)) << file;
    EXPECT_EQ(makeProcessor()->controller().macroForController(7), macro) << text;
  }
  writeFile(macroFolder / "Sivray.ccmap", "[]");
  EXPECT_THROW(makeProcessor(), std::runtime_error) << "an installation that is broken";
}

TEST_F(Construction, FailsWithoutAReadableDescription) {
  for (const char* text : {"", "{\"processor\": ", "[]"}) {
    writeFile(macroFolder / "readme.json", text);
    EXPECT_THROW(makeProcessor(), std::runtime_error) << text;
  }
  fs::remove(macroFolder / "readme.json");
  try {
    makeProcessor();
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "\"type mismatch! call is<type>() before get<type>()\" && is<object>()");
  }
}

TEST_F(Construction, ReadsNothingFromTheWorkingFolderWhereNoContentIsInstalled) {
  for (const char* variable : {"BRAMEL_COMMON_FILES", "XDG_DATA_HOME", "HOME"}) {
    ::unsetenv(variable);
  }
  ::setenv("XDG_DATA_DIRS", (root / "absent").c_str(), 1);
  fs::current_path(macroFolder);
  EXPECT_EQ(pathFor(kBramelPath_Macro, "Sivray"), "") << "else this test says nothing";
  EXPECT_THROW(makeProcessor(), std::runtime_error) << "a readme.json lies here";
  fs::current_path(fs::temp_directory_path());
}

}  // namespace
}  // namespace tesh::bramel::vst
