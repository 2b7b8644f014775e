// Ids, ranges, names and display texts of the parameters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "FrameScene.h"
#include "engine/MasterLevelTable.h"

namespace {

using namespace scene;

struct Engine {
  support::SampleFolder folder{support::assortedWaves(kWaves, 300)};
  PcmFile file{kSampleFolder};
  DrumEngine engine{file, kPadCount, kSlot};

  float setAndGet(std::uint32_t id, float value) {
    engine.setParameter(id, value);
    return engine.getParameter(id);
  }
};

TEST(Parameters, RoundToTheNearestIntegerOfTheirRange) {
  Engine e;
  EXPECT_EQ(e.setAndGet(0x050, 1.0F), 1.0F);
  EXPECT_EQ(e.engine.parameterDisplay(0x050), "wave11 : 011");
  EXPECT_EQ(e.setAndGet(0x044, 0.5F), 0.5F);
  EXPECT_EQ(e.engine.parameterDisplay(0x044), "000");
  EXPECT_EQ(e.setAndGet(0x004, 0.49F), 0.5F);
  EXPECT_EQ(e.setAndGet(0x008, 5.0F), 1.0F) << "a pad clamps";
  EXPECT_EQ(e.setAndGet(0x008, -5.0F), 0.0F);
}

TEST(Parameters, AnswerForEveryIdIncludingTheHoles) {
  Engine e;
  for (const std::uint32_t id : {0x080U, 0x115U, 0x122U, 0x132U, 0x230U, 0x1000U, 0xFFFFFFFFU}) {
    e.engine.setParameter(id, 0.5F);
    EXPECT_EQ(e.engine.getParameter(id), -1.0F) << id;
    EXPECT_EQ(e.engine.parameterDisplay(id), "") << id;
    EXPECT_EQ(e.engine.parameterDisplay(id, 0.5F), "") << id;
  }
  EXPECT_EQ(e.engine.getParameter(0x130), 0.5F) << "a silent meter";
  EXPECT_EQ(e.engine.getParameter(0x121), 0.0F) << "a range of nothing";
  EXPECT_FLOAT_EQ(e.engine.getParameter(kTempo), -1.0F / 3000.0F) << "can only be written";
}

TEST(Parameters, AreNamedByGroupAndRow) {
  Engine e;
  EXPECT_EQ(e.engine.parameterName(0x036), "003: Punch");
  EXPECT_EQ(e.engine.parameterName(0x110), "017: Master OUT");
  EXPECT_EQ(e.engine.parameterName(0x100), "000: Effect Type");
  EXPECT_EQ(e.engine.parameterName(0x141), "020: R Level");
  EXPECT_EQ(e.engine.parameterName(0x115), "017: ");
  EXPECT_EQ(e.engine.parameterName(0x080), "");
  EXPECT_EQ(e.engine.parameterName(0x230), "");
}

TEST(Parameters, ShowTheirValuesInWords) {
  Engine e;
  DrumCore core(e.file, 8, kSlot);
  const Q57214DrumParameterInfo pad(core, 0);
  struct Case {
    int index;
    std::int32_t value;
    const char* text;
  };
  constexpr std::array<Case, 22> kCases{
      {{2, 0, "One Shot"}, {2, 1, "Gate"},   {3, 0, "In Order"},  {3, 1, "Reverse"},      {4, 36, "+12"},
       {4, 12, "-12"},     {4, 23, "-01"},   {5, 200, "+100"},    {5, 100, "000"},        {6, 7, "007"},
       {9, 0, "L63"},      {9, 1, "L63"},    {9, 55, "L09"},      {9, 64, "Center"},      {9, 127, "R63"},
       {11, 1, "Smooth"},  {15, 127, "+63"}, {17, 0, "Saw Down"}, {17, 3, "Sample&Hold"}, {17, 6, ""},
       {18, 0, ""},        {-1, 0, ""}}};
  for (const Case& each : kCases) {
    EXPECT_EQ(pad.format(each.index, each.value), each.text) << each.index << ", " << each.value;
  }
  EXPECT_EQ(pad.indexOf("Mod Type"), 17);
  EXPECT_EQ(pad.indexOf("Volume"), -1);
  EXPECT_EQ(pad.info(18), nullptr);
}

TEST(Parameters, StartWithAWaveAndAGroupPerPad) {
  Engine e;
  for (std::uint32_t pad = 0; pad < 8; ++pad) {
    EXPECT_EQ(e.engine.getParameter(parameterId(pad, 0)), static_cast<float>(pad) / 11.0F);
    EXPECT_EQ(e.engine.getParameter(parameterId(pad, 1)), static_cast<float>(pad) / 15.0F);
  }
}

TEST(Parameters, DescribeThemselvesInAFixedRecord) {
  Player player;
  tesh::vimo::GeneratorParameterInfo info;
  EXPECT_TRUE(player.plugin.getParameterInfo(0x110, info));
  EXPECT_STREQ(info.name.data(), "017: Master OUT");
  EXPECT_FLOAT_EQ(info.step, 1.0F / 127.0F);
  EXPECT_TRUE(player.plugin.getParameterInfo(0x101, info));
  EXPECT_STREQ(info.name.data(), "000: Effect Swi") << "fifteen characters";
  EXPECT_EQ(info.value, 1.0F);
}

TEST(Parameters, LiveWithALibraryOfNoWaveAndOfOne) {
  for (const int waves : {0, 1}) {
    Player player(waves);
    player.set(0x000, 1.0F);
    EXPECT_TRUE(std::isfinite(player.plugin.getParameter(0x000)));
    openMaster(player);
    player.note(0, 36);
    player.process(512);
    EXPECT_EQ(player.firstSound() >= 0, waves > 0);
  }
}

TEST(MasterLevels, HoldTheirSum) {
  // The sum of all gains with 14 fractional bits shows an error in any digit except the last.
  const auto add = [](int sum, double gain) { return sum + static_cast<int>(gain * 16384); };
  EXPECT_EQ(std::accumulate(kMasterGains.begin(), kMasterGains.end(), 0, add), 1139803);
  EXPECT_TRUE(std::is_sorted(kMasterGains.begin(), kMasterGains.end()));
}

}  // namespace
