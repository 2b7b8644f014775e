// Inspections: valid files are shown completely, broken ones with the position of the fault.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/inspect/Inspect.h"

#include <gtest/gtest.h>
#include <picojson.h>

#include <cstdlib>
#include <random>

#include "content/Files.h"
#include "content/factory/MacroFiles.h"
#include "content/library/LibraryWriter.h"
#include "core/LittleEndian.h"
#include "engine/samples/SimilarWaves.h"
#include "storage/programs/UserProgramFile.h"
#include "storage/state/EditBufferRecord.h"
#include "support/Scratch.h"

namespace sivray::content {
namespace {

using Bytes = std::vector<std::uint8_t>;

factory::FactoryBank smallBank() {
  std::vector<std::string> waves;
  factory::Kit kit;
  kit.name = "Kit";
  for (auto& pad : kit.pads) {
    waves.push_back("Wave " + std::to_string(waves.size()));
    pad.wave = waves.back();
  }
  factory::Kit other = kit;
  other.name = "Other";
  return factory::makeFactoryBank({{"a.kit", kit}, {"b.kit", other}}, waves);
}

Bytes programImage(const Bytes& chunk) {
  const auto macroBytes = tesh::cofu::core::wordIn(chunk, 8).value();
  const auto programBytes = tesh::cofu::core::wordIn(chunk, 12).value();
  const auto image = tesh::cofu::core::bytesAt(chunk, 48 + macroBytes, programBytes);
  return {image.begin(), image.end()};
}

Bytes joined(std::initializer_list<std::uint32_t> words, const Bytes& rest) {
  Bytes bytes;
  tesh::cofu::core::ByteWriter writer(bytes);
  for (const std::uint32_t word : words) {
    writer.word(word);
  }
  writer.bytes(rest);
  return bytes;
}

class Inspect : public testing::Test {
 protected:
  Inspection inspect(const std::string& name, const Bytes& bytes) const {
    writeFile(scratch.path(name), bytes);
    return inspectFile(scratch.path(name));
  }
  Inspection inspect(const std::string& name, const std::string& text) const {
    return inspect(name, Bytes(text.begin(), text.end()));
  }

  /// Returns one file of each kind, with the name by which inspections recognise it.
  static std::vector<std::pair<std::string, Bytes>> wholeFiles() {
    const factory::FactoryBank bank = smallBank();
    const Bytes chunk = factory::makeMacroChunk(bank);
    const Bytes image = programImage(chunk);
    const Bytes engineChunk = factory::makePluginChunk(bank);
    Bytes programFile = joined(
        {1024, static_cast<std::uint32_t>(bank.layout.size()), static_cast<std::uint32_t>(image.size()), 4, 0}, image);
    Bytes exported = joined({256}, {'S', 'i', 'v', 'r', 'a', 'y'});
    exported.resize(64);
    exported.insert(exported.end(), programFile.begin(), programFile.end());
    const Bytes misc = factory::makeMiscChunk();
    Bytes content = joined({0, static_cast<std::uint32_t>(misc.size()), static_cast<std::uint32_t>(engineChunk.size()),
                            static_cast<std::uint32_t>(chunk.size())},
                           misc);
    content.insert(content.end(), engineChunk.begin(), engineChunk.end());
    content.insert(content.end(), chunk.begin(), chunk.end());
    tesh::bramel::vst::EditBufferRecord record;
    record.content = content;
    return {{"macro_chunk.bin", chunk},        {"state.bin", tesh::bramel::vst::packState(record)},
            {"plugin_chunk.bin", engineChunk}, {"misc_chunk.bin", misc},
            {"Sivray_User.prog", programFile}, {"exported", exported}};
  }

  support::Scratch scratch;
};

TEST_F(Inspect, ShowsAllKindsOfFilesAsTextAndAsJson) {
  for (const auto& [name, bytes] : wholeFiles()) {
    const Inspection inspection = inspect(name, bytes);
    EXPECT_FALSE(inspection.broken) << name << ": " << inspection.broken->what();
    picojson::value json;
    EXPECT_EQ(picojson::parse(json, inspection.report.toJson()), "") << name;
    EXPECT_FALSE(inspection.report.toText().empty());
  }
  const Inspection chunk = inspect("macro_chunk.bin", factory::makeMacroChunk(smallBank()));
  picojson::value json;
  picojson::parse(json, chunk.report.toJson());
  EXPECT_EQ(json.get("macros").get<picojson::array>().size(), 133U);
  EXPECT_EQ(json.get("programs").get(1).get("name").get<std::string>(), "Other");
  EXPECT_EQ(json.get("programName").get<std::string>(), "Kit");
}

TEST_F(Inspect, ShowsSimilarWavesAndWhetherTheyAreThoseOfTheIndexBeside) {
  using tesh::vimo::SimilarWaves;
  const std::vector<tesh::vimo::WaveKin> kins{{.wave = 3, .loudness = -20.25F, .nearest = {8, 16}, .farthest = 24},
                                              {.wave = 4, .loudness = 0.0F, .nearest = {}, .farthest = -1}};
  const Bytes index(48, 1);
  const Bytes bytes = SimilarWaves::pack(kins, index);
  for (const bool hasIndex : {false, true}) {
    const Inspection inspection = inspect("similar.bin", bytes);
    EXPECT_FALSE(inspection.broken);
    picojson::value json;
    ASSERT_EQ(picojson::parse(json, inspection.report.toJson()), "");
    const auto first = json.get("records").get(0);
    EXPECT_EQ(first.get("wave").get<double>(), 3.0);
    EXPECT_EQ(first.get("loudness").get<double>(), -20.25);
    EXPECT_EQ(first.get("farthest").get<double>(), 24.0);
    EXPECT_EQ(first.get("nearest").serialize(), "[8,16]");
    EXPECT_EQ(json.get("records").get(1).get("nearest").serialize(), "[]");
    if (!hasIndex) {
      writeFile(scratch.path("drumparam_category.bin"), index);
    }
  }
  EXPECT_EQ(inspect("similar.bin", Bytes(bytes.begin(), bytes.end() - 1)).broken->offset, 32U) << "the last record";
  EXPECT_EQ(inspect("similar.bin", Bytes(index)).broken->offset, 0U);
  writeFile(scratch.path("drumparam_category.bin"), Bytes(48, 2));
  EXPECT_EQ(inspect("similar.bin", bytes).broken->offset, 4U);
}

TEST_F(Inspect, FindsWhereACutFileEnds) {
  for (const auto& [name, bytes] : wholeFiles()) {
    const std::size_t stride = std::max<std::size_t>(bytes.size() / 40, 1);
    for (std::size_t size = 8; size < bytes.size(); size += stride) {
      const Inspection inspection =
          inspect(name, Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)));
      ASSERT_TRUE(inspection.broken) << name << " of " << size;
      EXPECT_LE(inspection.broken->offset, size) << name;
    }
  }
}

TEST_F(Inspect, SurvivesMangledFiles) {
  std::mt19937 generator(1);
  for (const auto& [name, bytes] : wholeFiles()) {
    for (int round = 0; round < 30; ++round) {
      Bytes mangled = bytes;
      for (int i = 0; i < 4; ++i) {
        const std::size_t reach = i < 2 ? std::min<std::size_t>(mangled.size(), 64) : mangled.size();
        mangled[generator() % reach] = static_cast<std::uint8_t>(generator());
      }
      try {
        inspect(name, mangled).report.toJson();
      } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("none of the files"), std::string::npos);
      }
    }
  }
}

TEST_F(Inspect, NamesThePlaceOfAFault) {
  struct Case {
    const char* name;
    Bytes bytes;
    std::uint64_t offset;
    const char* reason;
  };
  Bytes set = factory::makeMacroChunk(smallBank());
  const std::size_t firstSetType = 48 + 4 + 133 * 4 + 44;
  set[firstSetType] = 77;
  Bytes count = factory::makeMacroChunk(smallBank());
  count[4] = 132;
  LibraryFiles library;
  const Wave wave{"Wave", 2, 44100, {1, 2}, {3, 4}};
  library = makeLibrary({&wave, 1});
  writeFile(scratch.path("drumdata.bin"), library.data);
  writeFile(scratch.path("sampleparam.bin"), library.samples);
  Bytes right = library.waves;
  right[20] = 2;
  Bytes category = library.categories;
  category[0] = 17;
  const Case cases[] = {
      {"macro_chunk.bin", set, firstSetType + 8, "no set of the type 77"},
      {"macro_chunk.bin", count, 48, "holds 133 macros, but the header says 132"},
      {"drumparam.bin", right, 20, "names sample 2, but sampleparam.bin has 2"},
      {"drumparam_category.bin", category, 0, "category 17"},
      {"sampleparam.bin", joined({0, 4, 44100}, {}), 4, "reaches past the end of drumdata.bin, which has 4"},
      {"sampleparam.bin", joined({3, 2, 44100}, {}), 4, "ends before it starts"},
      {"sampleparam.bin", joined({0, 1, 0}, {1}), 8, "rate of 0"},
      {"drumdata.bin", {1, 2, 3}, 2, "1 bytes are left"},
      {"misc_chunk.bin", joined({300}, {'c', 's', 'i', 'm', 0, 0, 0, 0}), 0, "version 300"},
  };
  for (const Case& fault : cases) {
    const Inspection inspection = inspect(fault.name, fault.bytes);
    ASSERT_TRUE(inspection.broken) << fault.reason;
    EXPECT_EQ(inspection.broken->offset, fault.offset) << inspection.broken->what();
    EXPECT_NE(std::string(inspection.broken->what()).find(fault.reason), std::string::npos)
        << inspection.broken->what();
    writeFile(scratch.path("sampleparam.bin"), library.samples);
    writeFile(scratch.path("drumdata.bin"), library.data);
  }
}

TEST_F(Inspect, ReadsTheTextFilesAndNamesTheirFaults) {
  const factory::FactoryBank bank = smallBank();
  EXPECT_FALSE(inspect("readme.json", factory::makeReadme(bank)).broken);
  EXPECT_FALSE(inspect("parameter_description.json", factory::makeParameterDescription(bank)).broken);
  EXPECT_FALSE(inspect("Sivray.ccmap", factory::makeCcMap()).broken);
  EXPECT_EQ(inspect("x.ccmap", "\xEF\xBB\xBF{\"cc_map\": {\"7\": 99, ").broken->offset, 24U);
  EXPECT_FALSE(inspect("Sivray.native_mode_map", factory::makeNativeModeMap()).broken);
  EXPECT_EQ(inspect("x.ccmap", "{\"cc_map\": {\"7\": 99, ").broken->offset, 21U);
  EXPECT_EQ(inspect("x.ccmap", "{\"cc_map\": {\"7\": \"99\"}}").broken->offset, 12U);
  EXPECT_TRUE(inspect("readme.json", "{\"processor\": {\"macro_chunk\": \"x\"}}").broken);
  EXPECT_TRUE(inspect("readme.json", "[]").broken);
  EXPECT_TRUE(inspect("x.native_mode_map", "{}").broken);
}

TEST_F(Inspect, RefusesWhatIsNotOurs) {
  EXPECT_THROW(inspect("song.mid", "MThd and so on"), std::runtime_error);
  EXPECT_THROW(inspect("nothing", ""), std::runtime_error);
  EXPECT_THROW(inspectFile(scratch.path("missing")), std::runtime_error);
}

}  // namespace
}  // namespace sivray::content
