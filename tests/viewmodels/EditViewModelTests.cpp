// Parameters, programs and notifications of the edit view model, and the resulting calls to host and view.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModelScene.h"

namespace models {
namespace {

constexpr std::uint64_t kLevel = 1;
const Log kNothing;

using EditViewModel = ViewModels;

TEST_F(EditViewModel, MakesOneEditOfAGestureAndTellsNoView) {
  model->setParameterValue(kLevel, 0.5F);
  EXPECT_EQ(takeHostLog(), (Log{"begin 1", "automate 1", "end 1"}));
  model->beginParameterGesture(kLevel);
  for (const float value : {0.1F, 0.2F, 0.75F}) {
    model->setParameterValue(kLevel, value);
  }
  model->endParameterGesture(kLevel);
  EXPECT_EQ(takeHostLog(), (Log{"begin 1", "automate 1", "automate 1", "automate 1", "end 1"}));
  EXPECT_EQ(model->getParameterValue(kLevel), 0.75F);
  model->setParameterIntegerValue(kLevel, 7);
  EXPECT_EQ(model->getParameterIntegerValue(kLevel), 7U);
  EXPECT_EQ(takeHostLog(), kNothing);
  EXPECT_EQ(takeTold(), kNothing);
}

TEST_F(EditViewModel, SetsAHiddenParameterPastTheHost) {
  model->beginParameterGesture(kHidden);
  model->setParameterValue(kHidden, 1.0F);
  model->endParameterGesture(kHidden);
  EXPECT_EQ(model->getParameterValue(kHidden), 1.0F);
  EXPECT_EQ(model->getTooltipViewModel()->getText(kHidden), "127");
  run();
  EXPECT_EQ(model->getEngineParameterValue(targetOf(kHidden)), 1.0F);
  model->setParameterValue(kHidden, 0.0F);
  run();
  EXPECT_EQ(model->getEngineParameterValue(targetOf(kHidden)), 0.0F);
  EXPECT_EQ(takeHostLog(), kNothing);
}

TEST_F(EditViewModel, LosesAVisibleEditWithoutAHost) {
  host.reset();
  model->setParameterValue(kLevel, 1.0F);
  model->setParameterValue(kHidden, 1.0F);
  EXPECT_NE(model->getParameterValue(kLevel), 1.0F);
  EXPECT_EQ(model->getParameterValue(kHidden), 1.0F);
}

TEST_F(EditViewModel, DescribesParametersAndIgnoresUnknownOnes) {
  EXPECT_EQ(model->getParameterCount(), static_cast<std::int64_t>(kMacros));
  EXPECT_EQ(model->getParameterName(13), "macro13");
  EXPECT_EQ(model->getParameterDefault(13), 0.25F);
  EXPECT_EQ(model->getParameterStepCount(3), 2);
  for (const std::uint64_t unknown : {kMacros, ~std::uint64_t{0}}) {
    model->beginParameterGesture(unknown);
    model->setParameterValue(unknown, 0.5F);
    model->setParameterIntegerValue(unknown, 5);
    model->endParameterGesture(unknown);
    EXPECT_EQ(model->getParameterValue(unknown), 0.0F);
    EXPECT_EQ(model->getParameterIntegerValue(unknown), 0U);
    EXPECT_EQ(model->getParameterName(unknown), "");
    EXPECT_EQ(model->getTooltipViewModel()->getText(unknown), "0");
  }
  EXPECT_EQ(model->getEngineParameterValue(~std::uint64_t{0}), -1.0F);
  EXPECT_EQ(takeHostLog(), kNothing);
}

TEST_F(EditViewModel, RelaysNotificationsToTheViewWhileItLives) {
  model->notifyAllParametersChanged();
  model->notifyParameterChanged(5);
  model->notifyKeyboardStateChanged();
  const std::uint64_t ids[]{4, 3};
  model->notifyProgramSaved(ids, 2, "User");
  model->notifyProgramDeleted(ids, 1, "Factory");
  model->notifyProgramMoved(1, 0, "User");
  EXPECT_EQ(takeTold(), (Log{"all", "parameter 5, key 39 10", "keyboard", "saved User 4 3", "deleted Factory 4",
                             "moved User 1 0"}));

  view.reset();
  list.reset();
  model->notifyAllParametersChanged();
  model->notifyParameterChanged(5);
  model->notifyKeyboardStateChanged();
  model->notifyProgramSaved(ids, 2, "User");
  model->notifyProgramMoved(1, 0, "User");
  EXPECT_EQ(takeTold(), kNothing);
  EXPECT_TRUE(model->getListener().expired());
}

TEST_F(EditViewModel, StepsThroughProgramsWithoutWrapping) {
  Log seen;
  const auto note = [&] { seen.push_back(std::to_string(model->getProgramNumber()) + " " + model->getProgramName()); };
  for (int step = 0; step < 3; ++step) {
    model->selectNextProgram();
    note();
  }
  for (int step = 0; step < 3; ++step) {
    model->selectPreviousProgram();
    note();
  }
  EXPECT_EQ(seen, (Log{"2 second", "3 third", "3 third", "2 second", "1 first", "1 first"}));
  const Log log = takeHostLog();
  EXPECT_EQ(std::count(log.begin(), log.end(), "parameters"), 4) << "the steps past the ends select nothing";
}

TEST_F(EditViewModel, StaysEmptyWithoutAnEngine) {
  auto silent = std::make_shared<BramelInstrument>(nullptr);
  const auto empty = makeModel(silent);
  EXPECT_EQ(empty->getInstrumentName(), "Error");
  EXPECT_EQ(empty->getSettingsViewModel()->getInstrumentName(), "Error");
  EXPECT_EQ(empty->getParameterCount(), 0);
  EXPECT_EQ(empty->getMacroController(), nullptr);
  EXPECT_EQ(empty->getTooltipViewModel(), nullptr);
  EXPECT_EQ(empty->getSampleSelectorViewModel()->getCategoryIndex(0), -1);
  EXPECT_EQ(empty->getSampleName(0), "");
  EXPECT_EQ(empty->getKeyState(36), 17U);
  empty->setParameterValue(0, 1.0F);
  empty->selectNextProgram();
  EXPECT_EQ(empty->getProgramNumber(), 1U);
}

TEST_F(EditViewModel, LetsAnInstrumentInstallItsOwnModels) {
  struct Halves : CParameterQuantizer {
    std::int64_t valueToState(float, std::uint64_t) const override { return 5; }
  };
  model->setParameterQuantizer(std::make_shared<Halves>());
  EXPECT_EQ(model->getSampleName(0), "wave5");
  const auto other = makeModel(instrument)->getProgramListViewModel();
  model->setProgramListViewModel(other);
  EXPECT_EQ(model->getProgramListViewModel(), other);
  EXPECT_FALSE(model->isActive());
  instrument->resume();
  EXPECT_TRUE(model->isActive());
}

TEST_F(EditViewModel, NamesTheTooltipsOfTheEffectKnobsByTheEffect) {
  const auto tooltips = model->getTooltipViewModel();
  EXPECT_EQ(tooltips->getText(panel::kPan), "-63");
  tooltips->onValueChanged(panel::kPan, 1.0F);
  EXPECT_EQ(tooltips->getText(panel::kPan), "+63");
  EXPECT_EQ(tooltips->getName(panel::kPan), "");
  const std::string before = tooltips->getName(panel::kEffectEdit1Macro);
  model->setParameterValue(panel::kEffectTypeMacro, 0.5F);
  EXPECT_NE(tooltips->getName(panel::kEffectEdit1Macro), before);
}

}  // namespace
}  // namespace models
