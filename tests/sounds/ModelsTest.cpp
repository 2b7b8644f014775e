// Every model renders the same bits with every compiler, and table errors name their line.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <utility>

#include "content/models/Model.h"
#include "content/waves/FactoryWaves.h"
#include "support/Scratch.h"

namespace {

using namespace sivray::content;

std::uint64_t hashOf(const Wave& wave) {
  std::uint64_t hash = 14695981039346656037U;
  for (const auto* side : {&wave.left, &wave.right}) {
    for (const std::int16_t sample : *side) {
      hash = (hash ^ static_cast<std::uint16_t>(sample)) * 1099511628211U;
    }
  }
  return hash;
}

Wave waveOf(const std::string& row) { return makeWave({0, parseWaveTable(row, "here").front()}); }

/// Returns a row that uses all of a model and of the processing after it, each parameter between its default and its
/// highest value.
std::string fullRow(const std::string& model) {
  constexpr double kPart = 0.3;
  std::ostringstream row;
  row << "A | " << model
      << " | length=150 width=0.4 strokes=0:40 strokegains=0:-6 drive=6 steep=2 lowcut=60 highcut=9000 early=0.5"
         " room=0.3 hall=0.3 gate=90 reverse=1 bits=12";
  for (const ParameterRule& rule : findModel(model)->rules) {
    char separator = '=';
    row << ' ' << rule.name;
    for (const double fallback : rule.fallback) {
      row << std::exchange(separator, ':') << fallback + kPart * (rule.high - fallback);
    }
  }
  return row.str();
}

// Hashes of two short stereo waves of each model, one with its defaults and one with all its features, computed with
// GCC. Clang and all optimisation levels must agree. A hash may change only with a deliberate change of its model or of
// the processing after it; the failing test prints the new hash.
TEST(Models, GiveTheSameBitsEverywhere) {
  struct Golden {
    std::string model;
    std::uint64_t plain, full;
  };
  const std::vector<Golden> golden{
      {"clap", 0xcd5398306b5143c0U, 0x7b9db799bf0d430aU},   {"esnare", 0x8f29d2e4cc86107aU, 0x12ad1bcac296ccaU},
      {"fm", 0x91cbf34e0e847d8dU, 0x18831d86481db255U},     {"glitch", 0x4e3d66140c4bc903U, 0xbca32ef0f7e26a02U},
      {"head", 0xc1e32a80c8b8cdd8U, 0x37a4d4f30d14af35U},   {"impact", 0xe38fd8d51ad87b34U, 0x4bebdecad8818e5cU},
      {"kick", 0x77cd0b3019cb4302U, 0x18db57c26976e1b5U},   {"metal", 0xc9462d35b314ad0fU, 0xf6156a7718155090U},
      {"modal", 0xf5a891a5eb330fa7U, 0x2b703e5506d8abc8U},  {"plate", 0xf1b51c76b2de7a09U, 0x3eb0f36fdb18bbefU},
      {"pluck", 0x504223d5f0b6cc47U, 0xd8b7f4a6e26372b8U},  {"scratch", 0x2c7fc39ccade55a1U, 0x7e66f187f2936478U},
      {"shaker", 0x3226086b94daaf9bU, 0x3ec3473f6a9c77a1U}, {"snare", 0xd9f9e2b95799b6ddU, 0x30e49cfc54ccb0f4U},
      {"stab", 0x416dd77808501fcfU, 0x5df95c040e4e0cf3U},   {"sweep", 0xa5f73b2b7eea2a44U, 0xa4708699081ec332U},
      {"voice", 0x55ac60d16aa52fccU, 0x942a207dfd34c135U},  {"zap", 0x139b7d3fe06e4851U, 0xf0f09599dc18c100U},
  };
  EXPECT_EQ(golden.size(), std::ranges::count(modelNames(), ',') + 1U);
  for (const auto& [model, plain, full] : golden) {
    const Wave wave =
        waveOf("A | " + model + " | length=150 width=0.4 drive=6 shelf=2 room=0.2 hall=0.2 clock=30000 bits=9");
    EXPECT_EQ(hashOf(wave), plain) << model << std::hex << " 0x" << hashOf(wave);
    const Wave rich = waveOf(fullRow(model));
    EXPECT_EQ(hashOf(rich), full) << model << std::hex << " 0x" << hashOf(rich);
  }
}

TEST(Models, ChangeWithTheirSeedAndTheirParameters) {
  const std::string row = " | snare | length=200";
  const Wave wave = waveOf("A" + row);
  EXPECT_EQ(waveOf("A" + row).left, wave.left);
  EXPECT_NE(waveOf("B" + row).left, wave.left);
  EXPECT_NE(waveOf("A" + row + " wires=1.2").left, wave.left);
}

TEST(Models, LastAsLongAsTheSlowestOfTheirParts) {
  const std::string metal = "A | metal | length=800 body=1";
  EXPECT_GT(waveOf(metal + " t60=20 midms=700").left.size(), 4U * waveOf(metal + " t60=20 midms=20").left.size());
  EXPECT_GT(waveOf(metal + " t60=700 midms=20").left.size(), 4U * waveOf(metal + " t60=20 midms=20").left.size());
}

TEST(Models, StandTheEndsOfTheirParameters) {
  for (const std::string name : {"clap", "esnare", "fm", "glitch", "head", "impact", "kick", "metal", "modal", "plate",
                                 "pluck", "scratch", "shaker", "snare", "stab", "sweep", "voice", "zap"}) {
    const Model* model = findModel(name);
    ASSERT_NE(model, nullptr);
    for (const ParameterRule& rule : model->rules) {
      for (const double end : {rule.low, rule.high}) {
        const Wave wave = waveOf("A | " + name + " | length=30 width=0.5 " + rule.name + "=" + std::to_string(end));
        EXPECT_GE(wave.left.size(), 24U) << name << ' ' << rule.name;
        EXPECT_EQ(wave.left.back(), 0) << name << ' ' << rule.name << ' ' << end;
      }
    }
  }
}

TEST(WaveTable, SetsParametersFromDefaultsOnward) {
  const auto rows = parseWaveTable(
      "# kicks\n"
      "*    | kick | hz=60 fold=0.5\n"
      "\n"
      "Low  | kick | hz=40   # deep\r\n"
      "High | kick | t60=90\n"
      "Six  | metal | ratios=1:2:3:4:5:6\n",
      "kick.txt");
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0].name, "Low");
  EXPECT_EQ(rows[0].line, 4);
  EXPECT_EQ(rows[0].parameters["hz"], 40.0);
  EXPECT_EQ(rows[0].parameters["fold"], 0.5);
  EXPECT_EQ(rows[1].parameters["hz"], 60.0);
  EXPECT_EQ(rows[1].parameters.seconds("t60"), 0.09);
  EXPECT_THAT(rows[2].parameters.list("ratios"), testing::ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(WaveTable, SaysWhereAndWhyARowIsWrong) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"Name | kick", "a row is"},
      {"Name | kick | hz=50 | t60=3", "a row is"},
      {"Name | gong | hz=50", "'gong' is no model; there are clap"},
      {"Name | kick | hz", "'hz' is not 'parameter=value'"},
      {"Name | kick | herz=50", "no parameter 'herz' here; known are attack"},
      {"Name | kick | hz=5o", "'hz' takes a number from 20 to 2000, not '5o'"},
      {"Name | kick | hz=nan", "'hz' takes a number"},
      {"Name | kick | hz=", "'hz' takes a number"},
      {"Name | kick | hz=50:60", "too many"},
      {"Name | kick | hz=5000", "'hz' takes a number from 20 to 2000"},
      {"Name | metal | ratios=1::2", "'ratios' takes numbers with ':' between them"},
      {"Thirteen char | kick |", "'Thirteen char' is no name"},
      {" | kick |", "'' is no name"},
      {"Na\xC3\xAFve | kick |", "is no name"},
      {"Twice | kick |\nTwice | kick |", "'Twice' stands above already"},
  };
  for (const auto& [row, reason] : cases) {
    try {
      parseWaveTable("# first\n" + row, "kick.txt");
      ADD_FAILURE() << row;
    } catch (const TableError& error) {
      EXPECT_THAT(error.what(),
                  testing::StartsWith(row.find('\n') == std::string::npos ? "kick.txt:2: " : "kick.txt:3: "));
      EXPECT_THAT(error.what(), testing::HasSubstr(reason));
    }
  }
  EXPECT_THROW(readFactoryRows("no/such/folder"), TableError);
}

TEST(FactoryFolder, MakesItsTablesOnAllCoresByNumberAndRefusesANameTwice) {
  const support::Scratch folder;
  const std::vector<std::string> files{"kick", "snare",  "clap", "close-hh", "open-hh",
                                       "tom",  "cymbal", "perc", "fx",       "hit"};
  for (const std::string& file : files) {
    std::ofstream(folder / (file + ".txt"))
        << "A " << file << " | fm | length=40\nB " << file << " | clap | length=40\n";
  }
  std::ofstream numbers(folder / "numbers.txt");
  numbers << "# by number\n\n";
  for (const std::string& file : files) {
    numbers << "A " << file << "\n";
  }
  const auto reasonFor = [&folder] {
    try {
      makeFactoryWaves(folder.path());
    } catch (const TableError& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  numbers.flush();
  EXPECT_THAT(reasonFor(), testing::HasSubstr("clap.txt:2: 'B clap' has no number"));
  for (const std::string& file : files) {
    numbers << "B " << file << "\n";
  }
  numbers.flush();
  const std::vector<Wave> waves = makeFactoryWaves(folder.path());
  ASSERT_EQ(waves.size(), 20U);
  for (std::size_t i = 0; i < waves.size(); ++i) {
    EXPECT_EQ(waves[i].name, (i < 10 ? "A " : "B ") + files[i % 10]);
    EXPECT_EQ(waves[i].category, static_cast<int>(i % 10));
    const std::string row = waves[i].name + (i < 10 ? " | fm" : " | clap") + " | length=40";
    EXPECT_EQ(waves[i].left, makeWave({waves[i].category, parseWaveTable(row, "here").front()}).left);
  }
  numbers << "A kick\n" << std::flush;
  EXPECT_THAT(reasonFor(), testing::HasSubstr("numbers.txt:23: no table has a wave 'A kick', or it has a number"));
  std::ofstream(folder / "tom.txt", std::ios::app) << "A kick | fm |\n";
  EXPECT_THAT(reasonFor(), testing::EndsWith("tom.txt:3: the name 'A kick' stands in kick.txt already"));
}

}  // namespace
