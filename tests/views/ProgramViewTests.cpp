// The program bar and the list with a simulated mouse: choosing, saving under a name, overwriting and deleting.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWProgramListSaveAsView.h"
#include "views/BWProgramListView.h"
#include "views/PanelScene.h"
#include "widgets/BWLabel.h"
#include "widgets/BWStackingView.h"

namespace views {
namespace {

class ProgramPanel : public Panel {
 protected:
  BWProgramListView& openList() {
    hand().click(41 + 70, 81 + 10);
    return dynamic_cast<BWProgramListView&>(*view().programBar().listStack()->getTopPage());
  }
  juce::String shownName() {
    for (juce::Component* const child : view().programBar().getChildren()) {
      if (const auto* const text = dynamic_cast<PanelText*>(child)) {
        return text->getText();
      }
    }
    return {};
  }
  bool shows(const char* title) { return named(*view().programBar().listStack(), title) != nullptr; }
  void choose(const char* title) { clickOn(*named(*view().programBar().listStack(), title)); }
  std::string program() { return std::to_string(owner->getProgramNumber()) + " " + owner->getProgramName(); }

  static juce::TextButton* buttonOf(juce::Component& parent, const juce::String& text) {
    for (juce::Component* const child : parent.getChildren()) {
      auto* const button = dynamic_cast<juce::TextButton*>(child);
      auto* const found = button != nullptr && button->getButtonText() == text ? button : buttonOf(*child, text);
      if (found != nullptr) {
        return found;
      }
    }
    return nullptr;
  }

  /// Saves the current sounds under a name by the list's own buttons.
  void saveAs(BWProgramListView& list, const char* name) {
    list.openSaveAs();
    auto& page = dynamic_cast<BWProgramListSaveAsView&>(*view().programBar().listStack()->getTopPage());
    page.nameEditor().setText(juce::String::fromUTF8(name));
    choose("Save");
  }
};

TEST_F(ProgramPanel, StepsThroughTheProgramsAndStopsAtTheEnds) {
  owner->getProgramListViewModel()->selectProgram(1, "Factory");
  const auto step = [this](int x) {
    hand().click(x, 87);
    return program();
  };
  EXPECT_EQ(step(228), "1 first");
  EXPECT_EQ(step(263), "2 second");
  EXPECT_EQ(shownName(), "02:second") << "though no block runs";
  EXPECT_EQ(step(263), "3 third");
  EXPECT_EQ(step(263), "3 third");
  EXPECT_EQ(step(228), "2 second");
}

TEST_F(ProgramPanel, SelectsTheClickedRowAndOffersActionsForTheShownBank) {
  owner->getProgramListViewModel()->selectProgram(0, "Factory");
  openList();
  EXPECT_TRUE(shows("Save As"));
  EXPECT_FALSE(shows("Save"));
  EXPECT_FALSE(shows("Import"));
  hand().click(205 + 50, 12 + 40 + 44 + 28 * 2 + 10);
  EXPECT_EQ(program(), "3 third");
  choose("User");
  EXPECT_TRUE(shows("Import"));
  EXPECT_TRUE(shows("Export"));
  EXPECT_FALSE(shows("Save"));
  EXPECT_EQ(program(), "3 third") << "looking at another bank selects nothing";
}

TEST_F(ProgramPanel, SavesUnderANameIntoTheUserBankShowsItAndDeletesIt) {
  owner->getProgramListViewModel()->selectProgram(1, "Factory");
  BWProgramListView& list = openList();
  saveAs(list, "Mine");
  run();
  const std::uint64_t id = 0;
  owner->notifyProgramSaved(&id, 1, "User");
  owner->notifyAllParametersChanged();
  EXPECT_EQ(program(), "1 Mine");
  EXPECT_TRUE(shows("Save"));
  EXPECT_TRUE(shows("Import")) << "the tab turns to the user's bank";
  owner->getProgramListViewModel()->deleteProgram(0, "User");
  owner->notifyProgramDeleted(&id, 1, "User");
  EXPECT_FALSE(shows("Save")) << "the current program is gone";
  EXPECT_EQ(owner->getProgramListViewModel()->getProgramCount("User"), 0U);
}

TEST_F(ProgramPanel, CutsANameThatIsTooLongBetweenTwoCharacters) {
  const std::string kept(94, 'x');
  saveAs(openList(), (kept + "\u00e9").c_str());
  run();
  EXPECT_EQ(owner->getProgramName(), kept);
}

TEST_F(ProgramPanel, ShowsTheCurrentKitsNewNumberWhenOneBeforeItIsDeleted) {
  BWProgramListView& list = openList();
  saveAs(list, "one");
  saveAs(list, "two");
  run();
  owner->notifyAllParametersChanged();
  EXPECT_EQ(shownName(), "02:two");
  owner->getProgramListViewModel()->deleteProgram(0, "User");
  const std::uint64_t id = 0;
  owner->notifyProgramDeleted(&id, 1, "User");
  EXPECT_EQ(shownName(), "01:two");
}

TEST_F(ProgramPanel, HasATabForASecondFactoryBankThatIsNotEmpty) {
  instrument->saveProgramAs(1, "extra");
  run();
  EXPECT_EQ(owner->getProgramListViewModel()->getCurrentBank(), "Factory2");
  BWProgramListView& list = openList();
  EXPECT_EQ(list.getShownBank(), "Factory2") << "the current program's bank is in front";
  const juce::Component& middle = *named(list, "Factory 2");
  EXPECT_EQ(middle.getBounds(), juce::Rectangle<int>(93, 1, 93, 30));
  EXPECT_EQ(middle.getBounds().withX(186), named(list, "User")->getBounds());
  choose("Factory");
  hand().click(205 + 50, 12 + 40 + 44 + 28 + 10);
  EXPECT_EQ(program(), "2 second");
  choose("Factory 2");
  hand().click(205 + 50, 12 + 40 + 44 + 10);
  EXPECT_EQ(program(), "1 extra");
  EXPECT_FALSE(shows("Import")) << "only the user's bank takes files";
  EXPECT_FALSE(shows("Save"));
}

TEST_F(ProgramPanel, FollowsItsBanksWhenItIsOpenedOverAnOpenOne) {
  owner->getProgramListViewModel()->selectProgram(0, "Factory");
  openList();
  view().programBar().openList();
  EXPECT_FALSE(shows("Import"));
  const std::uint64_t id = 0;
  owner->notifyProgramSaved(&id, 1, "User");
  EXPECT_TRUE(shows("Import"));
}

TEST_F(ProgramPanel, TakesAnyNameAndLeavesOnCancel) {
  BWProgramListView& list = openList();
  saveAs(list, "");
  saveAs(list, "\xc3\xa9t\xc3\xa9");
  list.openSaveAs();
  choose("Cancel");
  const auto programs = owner->getProgramListViewModel();
  EXPECT_EQ(programs->getProgramCount("User"), 2U);
  EXPECT_EQ(programs->getProgramName(0, "User"), "");
  EXPECT_EQ(programs->getProgramName(1, "User"), "\xc3\xa9t\xc3\xa9");
  EXPECT_EQ(view().programBar().listStack()->getTopPage(), &list);
}

TEST_F(ProgramPanel, IgnoresTheSecondPressOfADoubleClickOnSaveAsAndOnSave) {
  BWProgramListView& list = openList();
  const juce::Component& button = *named(*view().programBar().listStack(), "Save As");
  const juce::Point<int> place = slot.getLocalPoint(&button, button.getLocalBounds().getCentre());
  slot.setTopLeftPosition(juce::Desktop::getInstance().getMainMouseSource().getScreenPosition().roundToInt() - place);
  const auto clickTwice = [&] {
    hand().click(place.x, place.y);
    hand().press(place.x + 1, place.y, 2).release();
  };
  clickTwice();  // The next page has "Save" at the position of "Save As".
  const auto programs = owner->getProgramListViewModel();
  EXPECT_EQ(programs->getProgramCount("User"), 0U);
  EXPECT_NE(view().programBar().listStack()->getTopPage(), &list);
  juce::Thread::sleep(juce::MouseEvent::getDoubleClickTimeout() + 10);
  clickTwice();
  EXPECT_EQ(programs->getProgramCount("User"), 1U);
  EXPECT_EQ(view().programBar().listStack()->getTopPage(), &list);
}

TEST_F(ProgramPanel, TakesReturnAsSaveAndEscapeAsCancel) {
  BWProgramListView& list = openList();
  for (const int key : {juce::KeyPress::escapeKey, juce::KeyPress::returnKey}) {
    list.openSaveAs();
    auto& page = dynamic_cast<BWProgramListSaveAsView&>(*view().programBar().listStack()->getTopPage());
    page.nameEditor().setText("by key");
    page.nameEditor().keyPressed(juce::KeyPress(key));
    juce::MessageManager::getInstance()->runDispatchLoopUntil(1);
    EXPECT_EQ(view().programBar().listStack()->getTopPage(), &list);
    const bool isSaved = key == juce::KeyPress::returnKey;
    EXPECT_EQ(owner->getProgramListViewModel()->getProgramCount("User"), isSaved ? 1U : 0U);
    EXPECT_EQ(shows("Save"), isSaved) << "at once, though no block runs";
  }
}

TEST_F(ProgramPanel, ExportsAndImportsByDialogsInsideThePanel) {
  const juce::File home = juce::File(folder.pathOf("home").string());
  home.createDirectory();
  const juce::File file = home.getChildFile("Mine.sivray_programs");
  BWProgramListView& list = openList();
  saveAs(list, "Mine");
  choose("User");
  const auto answer = [&](const char* action, const juce::String& name, const char* button) {
    choose(action);
    auto* const dialog =
        dynamic_cast<juce::FileChooserDialogBox*>(slot.getChildComponent(slot.getNumChildComponents() - 1));
    ASSERT_NE(dialog, nullptr) << action;
    EXPECT_TRUE(slot.getLocalBounds().contains(dialog->getBounds()));
    auto* const browser = findIn<juce::FileBrowserComponent>(*dialog);
    browser->setRoot(home);
    for (juce::Component* const child : browser->getChildren()) {
      if (auto* const field = dynamic_cast<juce::TextEditor*>(child)) {
        field->setText(name);
      }
    }
    auto* const pressed = buttonOf(*dialog, button);
    ASSERT_NE(pressed, nullptr) << button;
    pressed->onClick();
    juce::MessageManager::getInstance()->runDispatchLoopUntil(20);
  };
  const auto programs = owner->getProgramListViewModel();
  answer("Export", "Mine", "Save");
  EXPECT_TRUE(file.existsAsFile()) << "its ending is added";
  answer("Import", file.getFileName(), "Open");
  EXPECT_EQ(programs->getProgramCount("User"), 2U);
  answer("Export", "Mine", "Cancel");
  file.replaceWithText("something else");
  answer("Import", file.getFileName(), "Open");
  EXPECT_EQ(programs->getProgramCount("User"), 2U);
  ASSERT_NE(topPopup<BWLabel>(), nullptr) << "a file that cannot be read is answered";
  EXPECT_EQ(topPopup<BWLabel>()->getText(), file.getFileName() + " holds no kits that can be read.");
  hand().click(5, 5);
  answer("Export", "no folder/Mine", "Save");
  ASSERT_NE(topPopup<BWLabel>(), nullptr);
  EXPECT_EQ(topPopup<BWLabel>()->getText(), "Mine.sivray_programs could not be written.");
}

}  // namespace
}  // namespace views
