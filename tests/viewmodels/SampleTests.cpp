// Samples of the parts, and the key states that follow them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModelScene.h"

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
