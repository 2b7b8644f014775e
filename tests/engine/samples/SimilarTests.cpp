// Data about similar waves: its file, broken files, and random variations of kits.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <iterator>
#include <set>

#include "engine/samples/SivraySampleLibrary.h"
#include "support/SampleFolder.h"
#include "support/Scratch.h"

namespace tesh::vimo {
namespace {

using Bytes = std::vector<std::uint8_t>;

const Bytes kIndex{1, 2, 3};

std::vector<WaveKin> someKins() {
  return {{.wave = 0, .loudness = -20.0F, .nearest = {8, 16, 65534}, .farthest = 16},
          {.wave = 8, .loudness = -26.02F, .nearest = {0}, .farthest = -1},
          {.wave = 16, .loudness = -80.0F, .nearest = {}, .farthest = 0},
          {.wave = 65534, .loudness = 3.5F, .nearest = {0, 8, 16, 1, 2, 3, 4, 5}, .farthest = 8}};
}

SimilarWaves someWaves() {
  SimilarWaves waves;
  EXPECT_TRUE(waves.loadFrom(SimilarWaves::pack(someKins(), kIndex), kIndex));
  return waves;
}

TEST(SimilarWaves, ComeBackFromTheirFile) {
  const SimilarWaves waves = someWaves();
  for (const WaveKin& kin : someKins()) {
    const WaveKin* const found = waves.of(kin.wave);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->nearest, kin.nearest);
    EXPECT_EQ(found->farthest, kin.farthest);
    EXPECT_FLOAT_EQ(found->loudness, kin.loudness);
  }
  EXPECT_EQ(waves.of(1), nullptr);
}

TEST(SimilarWaves, RefuseFilesOfOtherLibrariesAndCutOnes) {
  const Bytes whole = SimilarWaves::pack(someKins(), kIndex);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    SimilarWaves waves;
    const bool isWhole = size % 24 == 8;  // Complete for fewer waves.
    EXPECT_EQ(waves.loadFrom(std::span(whole).first(size), kIndex), isWhole) << size;
  }
  SimilarWaves waves = someWaves();
  EXPECT_FALSE(waves.loadFrom(whole, Bytes{1, 2, 4}));
  EXPECT_EQ(waves.of(0), nullptr) << "nor is anything known of the old one";
}

TEST(SimilarWaves, AreReadBesideTheIndexWhenTheyAreAskedFor) {
  const support::SampleFolder folder(support::assortedWaves(4, 50));
  const std::string path = folder.pathOf("drumparam_category.bin").string();
  SivraySampleLibrary library;
  EXPECT_EQ(library.similarWaves().of(0), nullptr);
  ASSERT_TRUE(library.load(path));
  EXPECT_EQ(library.similarWaves().of(0), nullptr) << "there is no file";
  const Bytes bytes = SimilarWaves::pack(someKins(), support::bytesIn(path));
  folder.writeFile("similar.bin", std::string(bytes.begin(), bytes.end()));
  ASSERT_TRUE(library.load(path));
  ASSERT_NE(library.similarWaves().of(0), nullptr);
}

TEST(LevelKept, FollowsTheMeasuredLoudnessOnTheEnginesSquareLaw) {
  const SimilarWaves waves = someWaves();
  EXPECT_EQ(levelKept(waves, 0, 8, 64), 91) << "6 dB more are the root of 2";
  EXPECT_EQ(levelKept(waves, 8, 0, 91), 64);
  EXPECT_EQ(levelKept(waves, 0, 8, 0), 0);
  EXPECT_EQ(levelKept(waves, 0, 16, 100), 127) << "as near as it comes";
  EXPECT_EQ(levelKept(waves, 16, 0, 1), 1);
  EXPECT_EQ(levelKept(waves, 0, 5, 70), 70) << "of wave 5 nothing is known";
}

TEST(Varied, TakesNearestWavesByTheSeedAlone) {
  const SimilarWaves waves = someWaves();
  const std::vector<PadSound> kit{{0, 100}, {8, 64}, {16, 50}, {7, 80}, {65534, 20}};
  std::set<std::int32_t> seen;
  for (std::uint32_t seed = 0; seed < 50; ++seed) {
    const auto other = varied(waves, kit, seed);
    EXPECT_EQ(other, varied(waves, kit, seed));
    EXPECT_THAT(someKins()[0].nearest, testing::Contains(other[0].wave));
    EXPECT_EQ(other[1], (PadSound{0, 45}));
    EXPECT_EQ(other[2], kit[2]) << "it has none";
    EXPECT_EQ(other[3], kit[3]) << "nothing is known of it";
    seen.insert(other[4].wave);
  }
  EXPECT_EQ(seen.size(), 8U);
  // The first numbers of the Mersenne Twister with seed 5489 are 3499211612 and 581869302: 2 of 3, and 0 of 1.
  EXPECT_EQ(varied(waves, kit, 5489)[0].wave, someKins()[0].nearest[3499211612 % 3]);
}

}  // namespace
}  // namespace tesh::vimo
