// The program list's banks by name, and the operations that it refuses.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>

#include "ViewModelScene.h"

namespace models {
namespace {

class ProgramList : public ViewModels {
 protected:
  Log namesOf(const std::string& bank) const {
    Log names;
    for (std::uint64_t index = 0; index < programs->getProgramCount(bank); ++index) {
      names.push_back(programs->getProgramName(index, bank));
    }
    return names;
  }
  std::string selected() const {
    // Called first, because it applies a pending selection.
    const std::uint32_t index = programs->getCurrentProgramIndex();
    return programs->getCurrentBank() + " " + std::to_string(index);
  }

  std::shared_ptr<IProgramListViewModel> programs = model->getProgramListViewModel();
};

TEST_F(ProgramList, ListsBanksByNameAndActsOnFactoryForUnknownOnes) {
  programs->saveProgramAs("mine");
  // The user's bank has no next program, and the engine does not know of the selection yet.
  model->selectNextProgram();
  EXPECT_EQ(selected(), "User 0");
  EXPECT_EQ(namesOf("Factory"), (Log{"first", "second", "third"}));
  EXPECT_EQ(namesOf("User"), Log{"mine"});
  for (const char* const bank : {"Factory2", "Ghost", "factory", ""}) {
    EXPECT_EQ(namesOf(bank), Log{}) << bank;
    EXPECT_EQ(programs->getProgramName(0, bank), "") << bank;
  }
  programs->selectProgram(2, "no such bank");
  EXPECT_EQ(selected(), "Factory 2");
  programs->selectProgram(0, "User");
  EXPECT_EQ(selected(), "User 0");
}

TEST_F(ProgramList, StoresMovesAndDeletes) {
  for (const char* const name : {"a", "b", "c"}) {
    programs->saveProgramAs(name);
  }
  programs->moveProgram(0, 2, "User");
  EXPECT_EQ(namesOf("User"), (Log{"b", "c", "a"}));
  EXPECT_TRUE(programs->programExists("User", "c"));
  EXPECT_FALSE(programs->programExists("User", "C"));
  EXPECT_FALSE(programs->programExists("Ghost", "c"));
  programs->selectProgram(1, "User");
  programs->renameCurrentProgram("renamed");
  EXPECT_EQ(programs->getCurrentProgramName(), "renamed");
  programs->overwriteCurrentProgram();
  run();
  EXPECT_EQ(namesOf("User"), (Log{"b", "renamed", "a"}));
  programs->deleteProgram(1, "User");
  EXPECT_EQ(programs->getCurrentBank(), "Ghost");
  EXPECT_EQ(namesOf("User"), (Log{"b", "a"}));
  model->selectNextProgram();  // The ghost bank lists none.
  EXPECT_EQ(programs->getCurrentBank(), "Ghost");
}

TEST_F(ProgramList, ExportsAndImportsItsOwnFile) {
  EXPECT_EQ(programs->getExportFileStem(), "sivray_programs");
  programs->saveProgramAs("mine");
  const std::string path = folder.pathOf("a name with \\.sivray_programs").string();
  programs->importPrograms(path);
  EXPECT_EQ(namesOf("User"), Log{"mine"});
  programs->exportPrograms(path);
  programs->importPrograms(path);
  EXPECT_EQ(namesOf("User"), (Log{"mine", "mine"}));
}

TEST_F(ProgramList, TellsOnlyAListenerThatIsSet) {
  programs->setListener(nullptr);
  const std::uint64_t id = 1;
  model->getProgramListViewModelOwner()->programSaved(&id, 1, "User");
  model->getProgramListViewModelOwner()->programDeleted(&id, 1, "User");
  EXPECT_EQ(takeTold(), Log{});
}

}  // namespace
}  // namespace models
