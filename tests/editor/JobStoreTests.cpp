// Jobs that wait for the message thread: their order, one for each parameter and note, and a bounded number.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/JobStore.h"

#include "viewmodels/ViewModelScene.h"

namespace {

using tesh::bramel::vst::JobStore;
using Extent = JobStore::Extent;

class Jobs : public models::ViewModels {
 protected:
  models::Log run(Extent extent) {
    while (const auto job = jobs.take(extent)) {
      job->run(*model);
    }
    return takeTold();
  }
  std::string parameter(int id) const {
    return "parameter " + std::to_string(id) + ", key 39 " + std::to_string(model->getKeyState(39));
  }

  JobStore jobs{models::kMacros};
};

TEST_F(Jobs, WaitForTheirReleaseAndKeepTheirOrder) {
  jobs.putParameter(7);
  jobs.putNote(36, true);
  jobs.putParameter(3);
  EXPECT_EQ(run(Extent::released), models::Log{});
  EXPECT_TRUE(jobs.release());
  EXPECT_FALSE(jobs.release());
  jobs.putParameter(5);
  EXPECT_EQ(run(Extent::released), (models::Log{parameter(7), "on 36", parameter(3)}));
  EXPECT_EQ(run(Extent::all), models::Log{parameter(5)});
}

TEST_F(Jobs, NeverWaitTwiceForOneParameterHoweverLongNobodyTakesThem) {
  for (int round = 0; round < 1000; ++round) {
    for (std::uint64_t id = 0; id < models::kMacros + 2; ++id) {
      jobs.putParameter(id);
    }
    jobs.putAllParameters();
    jobs.release();
  }
  EXPECT_EQ(run(Extent::released).size(), models::kMacros + 1);
  jobs.putParameter(0);
  jobs.putAllParameters();
  EXPECT_EQ(run(Extent::all), (models::Log{parameter(0), "all"})) << "what was taken may wait again";
}

TEST_F(Jobs, EndWithTheLastThatHappenedToANoteAndShowAStrokeThatIsOver) {
  const auto after = [this](std::initializer_list<bool> strokes) {
    for (const bool isOn : strokes) {
      jobs.putNote(40, isOn);
    }
    return run(Extent::all);
  };
  EXPECT_EQ(after({true, false}), (models::Log{"on 40", "off 40"}));
  EXPECT_EQ(after({true, false, true}), (models::Log{"off 40", "on 40"}));
  EXPECT_EQ(after({true, false, true, false, false}), (models::Log{"on 40", "off 40"}));
  EXPECT_EQ(after({false, false}), models::Log{"off 40"});
  jobs.putNote(128, true);
  EXPECT_EQ(run(Extent::all), models::Log{});
}

TEST_F(Jobs, TellOfAProgramThatIsChosenAfterTheNewsOfIt) {
  const auto news = [](tesh::bramel::IPluginEditViewModelOwner& viewModel) {
    viewModel.notifyProgramMoved(1, 2, "User");
  };
  jobs.putAllParameters();
  jobs.putNews(news);
  jobs.putAllParameters();
  EXPECT_EQ(run(Extent::all), (models::Log{"all", "moved User 1 2", "all"}));
  jobs.putNews(news);  // Never taken out, so the store must free it.
}

}  // namespace
