// Compares the factory waves with recorded drums: onsets, decays and variety. The recordings are represented by the
// quantiles of TargetTable.cpp only.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <map>
#include <sstream>
#include <utility>

#include "FallingSounds.h"
#include "content/library/LibraryReader.h"
#include "content/measure/Spread.h"
#include "content/measure/Targets.h"
#include "content/waves/FactoryWaves.h"

namespace sivray::content {
namespace {

/// Returns the waves of the installed library by group.
const std::array<std::vector<MeasuredWave>, kGroups>& groupedWaves() {
  static const auto grouped = [] {
    std::map<std::string, std::optional<Group>> groups;
    for (const FactoryRow& row : readFactoryRows(SIVRAY_WAVE_TABLES)) {
      groups[row.row.name] = groupOf(row);
    }
    std::vector<SourceWave> sources;
    for (Wave& wave : readLibrary(SIVRAY_CONTENT_FOLDER "/Tesh/Bramel/Resource/SivrayPCM")) {
      const auto group = groups.at(wave.name);
      if (group && *group < Group::machineKick) {
        sources.push_back({std::move(wave), group});
      }
    }
    std::array<std::vector<MeasuredWave>, kGroups> byGroup;
    for (MeasuredWave& wave : measureWaves(sources)) {
      byGroup[static_cast<std::size_t>(*wave.group)].push_back(std::move(wave));
    }
    return byGroup;
  }();
  return grouped;
}

constexpr Group kAcoustic[]{Group::kick,    Group::snare, Group::stick, Group::closedHat,
                            Group::openHat, Group::tom,   Group::crash, Group::ride};

/// The median D of two recorded hits of different sets, over the sixteen sets of docs/sounds.md.
constexpr std::array kApartInAllSets{8.3, 7.6, 7.6, 9.2, 8.7, 7.9, 8.4, 8.4};
static_assert(kApartInAllSets.size() == std::size(kAcoustic));

std::string nameOf(Group group) { return std::string(kGroupNames[static_cast<std::size_t>(group)]); }

const std::vector<MeasuredWave>& wavesOf(Group group) { return groupedWaves()[static_cast<std::size_t>(group)]; }

/// Judges the sound of the release build's content, so sanitizer builds skip it.
class WaveGoals : public testing::Test {
 protected:
  void SetUp() override {
    if (SIVRAY_KIT_STRIDE > 1) {
      GTEST_SKIP() << "measured in the release build";
    }
  }
};

TEST_F(WaveGoals, NoFigureTellsTheMiddleOfAGroupFromRecordings) {
  for (const Group group : kAcoustic) {
    ASSERT_FALSE(wavesOf(group).empty()) << nameOf(group);
    for (std::size_t figure = 0; figure < kFigures; ++figure) {
      if (!isTelling(group, figure)) {
        continue;
      }
      double higher = 0.0;
      for (const MeasuredWave& wave : wavesOf(group)) {
        higher += placeIn(kTargets[static_cast<std::size_t>(group)][figure], wave.figures[figure]);
      }
      higher /= static_cast<double>(wavesOf(group).size());
      EXPECT_GT(higher, 0.2) << nameOf(group) << ' ' << kFigureNames[figure].name;
      EXPECT_LT(higher, 0.8) << nameOf(group) << ' ' << kFigureNames[figure].name;
    }
  }
}

TEST_F(WaveGoals, TwoWavesDifferAsTwoDrumsDo) {
  constexpr double kShare = 0.7;
  for (const Group group : kAcoustic) {
    std::vector<const Picture*> pictures;
    for (const MeasuredWave& wave : wavesOf(group)) {
      pictures.push_back(&wave.picture);
    }
    const auto index = static_cast<std::size_t>(group);
    EXPECT_GT(apart(pictures), kShare * std::max(kRecordedApart[index], kApartInAllSets[index])) << nameOf(group);
  }
}

/// The proportions of stereo hits in recorded sets: most drums have a microphone of their own, while hats, cymbals and
/// side sticks are often recorded from above.
TEST_F(WaveGoals, StereoIsWhereMicrophonesHaveIt) {
  struct Share {
    Group group;
    double least, most;
  };
  for (const auto& [group, least, most] :
       {Share{Group::kick, 0.3, 0.5}, Share{Group::tom, 0.17, 0.4}, Share{Group::closedHat, 0.18, 0.4},
        Share{Group::openHat, 0.18, 0.4}, Share{Group::stick, 0.4, 0.7}, Share{Group::snare, 0.17, 0.37},
        Share{Group::crash, 0.2, 0.4}}) {
    double wide = 0.0;
    for (const MeasuredWave& wave : wavesOf(group)) {
      wide += wave.monoLoss.has_value() ? 1.0 : 0.0;
      EXPECT_LT(wave.monoLoss.value_or(0.0), 3.0) << wave.name;
    }
    const double share = wide / static_cast<double>(wavesOf(group).size());
    EXPECT_GE(share, least) << nameOf(group);
    EXPECT_LE(share, most) << nameOf(group);
  }
}

double figureOf(const Hit& hit, Figure figure) {
  return FigureMeter().figuresOf(hit)[static_cast<std::size_t>(figure)];
}

TEST(Figures, KnowCrestRiseAndColour) {
  EXPECT_NEAR(figureOf(fallingSine(1000.0, 60.0), Figure::crest), 3.0, 0.1);
  EXPECT_GT(figureOf(fallingSine(1000.0, 0.05), Figure::crest), 10.0);
  Hit late = fallingSine(1000.0, 60.0);
  for (std::size_t i = 0; i < 441; ++i) {
    late[i] *= static_cast<float>(i) / 441.0F;
  }
  EXPECT_NEAR(figureOf(late, Figure::rise), 8.0, 0.5);  // 10 to 90 % of 10 ms.
  EXPECT_NEAR(figureOf(fallingNoise(1.0, 1), Figure::flatness), -2.5, 0.3);
  EXPECT_LT(figureOf(fallingSine(5000.0, 1.0), Figure::flatness), -10.0);
  Hit both = fallingSine(300.0, 3.0);
  const Hit early = fallingSine(6000.0, 0.1);
  for (std::size_t i = 0; i < both.size(); ++i) {
    both[i] += early[i];
  }
  EXPECT_NEAR(figureOf(both, Figure::lateCentroid), 300.0, 20.0) << "what has died away by then counts no more";
}

TEST(Figures, HaveAPlaceAmongRecordings) {
  const Range range{0.0, 10.0, 20.0, 20.0, 40.0};
  EXPECT_DOUBLE_EQ(placeIn(range, -1.0), 0.025);
  EXPECT_DOUBLE_EQ(placeIn(range, 5.0), 0.15);
  EXPECT_DOUBLE_EQ(placeIn(range, 20.0), 0.625) << "between two points that are the same";
  EXPECT_DOUBLE_EQ(placeIn(range, 30.0), 0.85);
  EXPECT_DOUBLE_EQ(placeIn(range, 41.0), 0.975);
}

TEST(Figures, MonoLosesWhatTheSidesDoNotShare) {
  Wave wave{"Wave", 0, 44100, {100, -100, 100, -100}, {}};
  EXPECT_EQ(monoLossOf(wave), std::nullopt);
  wave.right = wave.left;
  EXPECT_EQ(monoLossOf(wave), std::nullopt);
  wave.right = {100, 100, -100, -100};
  EXPECT_NEAR(monoLossOf(wave).value(), 3.0, 0.1);
}

/// Snares of noise, compared with recorded snares of noise and kicks of sines.
TEST(Spread, TellsHowFarApartWavesAreAndWhatTheyAreReadAs) {
  PictureMaker pictures;
  std::vector<Reference> references;
  std::vector<MeasuredWave> waves;
  const auto record = [&](Group group, const std::string& set, Half half, const Hit& hit) {
    references.push_back({set, "file", "drum", group, half, {}, hit, pictures.pictureOf(hit)});
  };
  for (unsigned i = 0; i < 4; ++i) {
    const std::string set = "Set " + std::to_string(i);
    const Half half = i % 2 == 0 ? Half::tune : Half::judge;
    record(Group::snare, set, half, fallingNoise(0.3 + 0.1 * i, i));
    record(Group::kick, set, half, fallingSine(50.0 + 10.0 * i, 0.3));
    MeasuredWave wave{"Wave", 1, Group::snare, {}, fallingNoise(0.35 + 0.1 * i, i + 10), {}, {}};
    wave.picture = pictures.pictureOf(wave.hit);
    waves.push_back(std::move(wave));
  }
  waves.back().hit = fallingSine(60.0, 0.3);
  waves.back().picture = pictures.pictureOf(waves.back().hit);
  std::ostringstream out;
  printSpread(out, waves, references, Half::both);
  EXPECT_NE(out.str().find("Snare, acoustic"), std::string::npos);
  EXPECT_NE(out.str().find(" 75 / 100 %"), std::string::npos) << "one is a sine\n" << out.str();
  EXPECT_EQ(out.str().find("Kick"), std::string::npos) << "none of ours\n" << out.str();
  const Picture* const one[]{&waves[0].picture};
  EXPECT_EQ(apart(one), 0.0);
}

}  // namespace
}  // namespace sivray::content
