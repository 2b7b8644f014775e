// Samples of the parts, and the key states that follow them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModelScene.h"
#include "engine/samples/SimilarWaves.h"
#include "storage/paths/Paths.h"

namespace models {
namespace {

using Samples = ViewModels;

TEST_F(Samples, GiveEveryPairOfCategoryAndPlaceBack) {
  const auto samples = model->getSampleSelectorViewModel();
  ASSERT_EQ(samples->getPartCount(), 8);
  ASSERT_EQ(samples->getCategoryCount(), 10);
  std::size_t pairs = 0;
  for (std::int64_t category = 0; category < samples->getCategoryCount(); ++category) {
    for (std::int64_t index = 0; index < samples->getSampleCount(category); ++index, ++pairs) {
      const std::uint64_t part = pairs % 8;
      samples->selectSample(part, category, index);
      ASSERT_EQ(samples->getCategoryIndex(part), category);
      ASSERT_EQ(samples->getSampleIndex(part), index);
      ASSERT_EQ(model->getSampleName(part), samples->getSampleName(category, index));
    }
  }
  EXPECT_EQ(pairs, kCategoryOfWave.size());
  EXPECT_EQ(samples->getSampleName(9, 1), "wave9");
  EXPECT_EQ(samples->getSampleCount(2), 0);  // No claps.
  EXPECT_EQ(takeTold(), Log{});
}

TEST_F(Samples, ReachTheEngineAsWaveNumbers) {
  model->getSampleSelectorViewModel()->selectSample(7, 3, 1);  // The second closed hi-hat: wave 8.
  EXPECT_EQ(takeHostLog(), (Log{"begin 84", "automate 84", "end 84"}));
  EXPECT_EQ(model->getParameterValue(84), 0.8F);
  run();
  EXPECT_FLOAT_EQ(model->getEngineParameterValue(targetOf(84)), 0.8F);
}

TEST_F(Samples, AreToldThoughNoBlockRuns) {
  const auto editor = std::make_shared<shell::NotingEditor>();
  instrument->setUICallback(editor);
  model->getSampleSelectorViewModel()->selectSample(4, 0, 1);
  EXPECT_EQ(std::count(editor->log.begin(), editor->log.end(), "changed 48"), 1);
}

/// Eleven waves: 0 and 9 are alike, and 1 is a quarter as loud as wave 4, the only one similar to it.
class Finder : public ViewModels {
 protected:
  Finder() {
    using tesh::vimo::SimilarWaves;
    const std::vector<tesh::vimo::WaveKin> kins{
        {.wave = 0, .loudness = -20.0F, .nearest = {9, 1}, .farthest = 9},
        {.wave = 9, .loudness = -20.0F, .nearest = {0}, .farthest = 0},
        {.wave = 1, .loudness = -32.04F, .nearest = {4}, .farthest = 4},
        {.wave = 4, .loudness = -20.0F, .nearest = {1}, .farthest = -1},
    };
    const auto bytes = SimilarWaves::pack(kins, readFile(folder.pathOf("drumparam_category.bin").string()));
    folder.writeFile("similar.bin", std::string(bytes.begin(), bytes.end()));
    finder = model->getSampleFinder();
  }

  void give(std::uint64_t part, int wave) { model->setParameterValue(12 * part, static_cast<float>(wave) / 10.0F); }
  std::vector<std::string> names() const {
    std::vector<std::string> result;
    for (std::uint64_t part = 0; part < 8; ++part) {
      result.push_back(model->getSampleName(part));
    }
    return result;
  }

  std::shared_ptr<tesh::bramel::plugin::sivray::SivraySampleFinder> finder;
};

TEST_F(Finder, NamesSimilarSamplesAndTheMostDifferentOne) {
  const auto similar = finder->similarTo(9, 0);  // Wave 0.
  ASSERT_EQ(similar.size(), 2U);
  EXPECT_EQ(similar[0].name, "wave9");
  EXPECT_EQ(similar[0].category, 9);
  EXPECT_EQ(similar[0].index, 1);
  EXPECT_EQ(finder->somethingElse(9, 0)->name, "wave9");
  EXPECT_FALSE(finder->somethingElse(0, 1)) << "wave 4 is alone";
  EXPECT_TRUE(finder->similarTo(1, 0).empty()) << "nothing is known of wave 2";
  EXPECT_TRUE(finder->similarTo(2, 0).empty()) << "there is no such sample";
}

TEST_F(Finder, GoesBackThroughAPartsChoicesUnlessSomethingElseHasChangedIt) {
  const auto samples = model->getSampleSelectorViewModel();
  give(3, 2);
  EXPECT_FALSE(finder->previousOf(3)) << "no choice";
  samples->selectSample(3, 0, 0);
  samples->selectSample(3, 0, 1);
  samples->selectSample(3, 0, 1);
  EXPECT_EQ(finder->previousOf(3)->name, "wave1");
  EXPECT_FALSE(finder->previousOf(2)) << "another part's";
  EXPECT_FALSE(finder->previousOf(8));
  finder->goBack(3);
  EXPECT_EQ(model->getSampleName(3), "wave1");
  finder->goBack(3);
  EXPECT_EQ(model->getSampleName(3), "wave2");
  finder->goBack(3);
  EXPECT_EQ(model->getSampleName(3), "wave2");
  samples->selectSample(3, 0, 0);
  give(3, 7);
  EXPECT_FALSE(finder->previousOf(3)) << "a kit, or the host";
}

class FreeNumber : public ViewModels {
 protected:
  FreeNumber() : ViewModels(withFreeNumber()) {}

  /// Number 11 is not in the list and plays as wave 2.
  static std::vector<support::Wave> withFreeNumber() {
    std::vector<support::Wave> waves = support::categorisedWaves();
    waves.push_back(waves[2]);
    waves.back().category = 0;
    return waves;
  }
};

TEST_F(FreeNumber, ComesBackAsTheNumberThatItWas) {
  model->setParameterValue(36, 1.0F);
  EXPECT_EQ(model->getSampleName(3), "wave2");
  model->getSampleSelectorViewModel()->selectSample(3, 0, 0);
  EXPECT_EQ(model->getSampleFinder()->previousOf(3)->name, "wave2");
  model->getSampleFinder()->goBack(3);
  EXPECT_EQ(model->getParameterValue(36), 1.0F);
}

TEST_F(Finder, VariesAKitAsLoudAsBeforeByOneEditOfEachParameterAndTakesItBack) {
  for (std::uint64_t part = 0; part < 8; ++part) {
    give(part, 2);
    model->setParameterValue(12 * part + 1, 0.5F);
  }
  EXPECT_FALSE(finder->canVary()) << "nothing is known of wave 2";
  give(0, 1);
  give(4, 9);
  const auto before = names();
  takeHostLog();
  ASSERT_TRUE(finder->canVary());
  EXPECT_FALSE(finder->canUndoVary());
  finder->vary(7);
  EXPECT_EQ(takeHostLog(), (Log{"begin 0", "automate 0", "end 0", "begin 1", "automate 1", "end 1", "begin 48",
                                "automate 48", "end 48"}));
  EXPECT_EQ(names(),
            (std::vector<std::string>{"wave4", "wave2", "wave2", "wave2", "wave0", "wave2", "wave2", "wave2"}));
  EXPECT_FLOAT_EQ(model->getParameterValue(1), 32.0F / 127.0F) << "a quarter of the gain is half of the level, 64";
  EXPECT_TRUE(finder->canUndoVary());
  finder->undoVary();
  EXPECT_EQ(names(), before);
  EXPECT_FLOAT_EQ(model->getParameterValue(1), 64.0F / 127.0F);
  EXPECT_FALSE(finder->canUndoVary());
  finder->vary(7);
  instrument->saveProgramAs(1, "first of its bank");
  ASSERT_EQ(model->getProgramNumber(), 1U);
  EXPECT_FALSE(finder->canUndoVary()) << "another kit's, though of the same number";
  finder->vary(7);
  model->selectNextProgram();
  EXPECT_TRUE(finder->canUndoVary()) << "no kit follows";
  model->getProgramListViewModel()->selectProgram(1, "Factory");
  EXPECT_FALSE(finder->canUndoVary()) << "another kit's";
}

TEST_F(Samples, IgnoreWhatDoesNotExist) {
  const auto samples = model->getSampleSelectorViewModel();
  samples->selectSample(8, 0, 0);
  samples->selectSample(0, 2, 0);
  samples->selectSample(0, 0, 2);
  samples->selectSample(0, -1, 0);
  samples->selectSample(0, 0, -1);
  samples->selectSample(0, 10, 0);
  EXPECT_EQ(takeHostLog(), Log{});
  EXPECT_EQ(samples->getSampleName(3, 2), "");
  EXPECT_EQ(samples->getSampleCount(-1), 0);
  EXPECT_EQ(samples->getCategoryName(9), "Hit");
  EXPECT_EQ(samples->getCategoryName(10), "");
  EXPECT_EQ(samples->getCategoryName(-1), "");
}

TEST_F(Samples, SetTheKeyStatesOfTheirPads) {
  for (std::uint8_t note = 0; note < 128; ++note) {  // Every pad begins with wave 0, a hit.
    ASSERT_EQ(model->getKeyState(note), note >= 36 && note <= 43 ? 10U : 17U) << int{note};
  }
  const std::array<std::uint32_t, 11> stateOfWave{10, 0, 3, 8, 0, 1, 3, 10, 8, 10, 1};
  for (std::size_t wave = 0; wave < stateOfWave.size(); ++wave) {
    model->setParameterValue(36, static_cast<float>(wave) / 10.0F);
    model->notifyParameterChanged(36);
    EXPECT_EQ(model->getKeyState(39), stateOfWave[wave]) << wave;
  }
}

TEST_F(Samples, ChangeKeyStatesAfterTheViewWasToldAndOnlyForSamples) {
  model->setParameterValue(36, 0.0F);
  model->notifyParameterChanged(36);
  model->setParameterValue(36, 0.5F);
  host->log.clear();
  model->notifyParameterChanged(37);
  EXPECT_EQ(host->log, Log{});
  EXPECT_EQ(model->getKeyState(39), 10U);
  takeTold();
  model->notifyParameterChanged(36);
  EXPECT_EQ(takeTold(), Log{"parameter 36, key 39 10"});
  EXPECT_EQ(model->getKeyState(39), 1U);
  EXPECT_EQ(host->log.size(), 128U);
  model->setParameterValue(36, 0.0F);
  model->notifyAllParametersChanged();
  EXPECT_EQ(model->getKeyState(39), 10U);
  model->setAllKeyStates(4);
  EXPECT_EQ(model->getKeyState(127), 4U);
  EXPECT_EQ(model->getKeyState(128), 0U);
}

}  // namespace
}  // namespace models
