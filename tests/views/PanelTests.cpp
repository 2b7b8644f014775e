// Actions on the panel and their effects on host and engine; changes of the engine and how the panel shows them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include "views/BWPluginSettingsView.h"
#include "views/BWProgramListSaveAsView.h"
#include "views/BWProgramListView.h"
#include "views/BWSampleSelectorView.h"
#include "views/PanelScene.h"
#include "widgets/BWImageKnob.h"
#include "widgets/BWSimpleListView.h"
#include "widgets/BWStackingView.h"
#include "widgets/BWTrackingView.h"

namespace views {
namespace {

TEST_F(Panel, TellsTheHostOneEditWithAValueForEachMoveOfADrag) {
  const auto knob = middleOf(kPitch);
  hand().press(knob.x, knob.y).drag(knob.x, knob.y - 30).drag(knob.x, knob.y - 60).release();
  Log log = takeHostLog();
  ASSERT_GE(log.size(), 3U);
  EXPECT_EQ(log.front(), "begin 4");
  EXPECT_EQ(log.back(), "end 4");
  EXPECT_EQ(std::count(log.begin(), log.end(), "automate 4"), static_cast<std::ptrdiff_t>(log.size()) - 2);
  EXPECT_GT(owner->getParameterValue(kPitch), 0.25F);
}

TEST_F(Panel, StepsAKnobAndAFaderByTheHandsSpeed) {
  static std::uint32_t now = 0;
  const auto draggedBy = [this](std::uint64_t parameter, int pixels) {
    automate(parameter, 0.0F);
    findIn<BWTrackingView>(*view().getControl(parameter))->setClock([] { return now += 10; });
    const juce::Point<int> start = middleOf(parameter);
    hand().press(start.x, start.y).drag(start.x, start.y - pixels).release();
    return dynamic_cast<IBWContinuousStateControl&>(*view().getControl(parameter)).getValue();
  };
  EXPECT_EQ(draggedBy(kEnvelopeTime, 10), 13.0F / 127.0F);  // 1000 pixels a second: 0.106.
  view().selectPage(2);
  EXPECT_EQ(draggedBy(kLevel, 10), 4.0F / 60.0F);  // 0.0604: a fader uses the factor 0.6 to the power 1.1.
  view().selectPage(0);
  draggedBy(kPitch, 4);  // 0.0386 of the range.
  EXPECT_EQ(owner->getParameterValue(kPitch), 2.0F / 48.0F);
  EXPECT_EQ(dynamic_cast<BWImageKnob&>(*view().getControl(kPitch)).getFrame(), 5U);
  EXPECT_EQ(tooltip(), "macro4: -22");
}

TEST_F(Panel, ShowsWhatTheHostSetsRoundedToTheStatesOfEachControl) {
  automate(kPitch, 14.4F / 48.0F);
  EXPECT_EQ(dynamic_cast<IBWContinuousStateControl&>(*view().getControl(kPitch)).getValue(), 14.0F / 48.0F);
  EXPECT_EQ(view().getTooltipValue(kPitch), "-10");
  EXPECT_EQ(tooltip(), "") << "nobody's hand";
  auto& mute = dynamic_cast<IBWTwoStateControl&>(*view().getControl(kMute));
  automate(kMute, 0.5F);
  EXPECT_TRUE(mute.getState());
  automate(kMute, 0.49F);
  EXPECT_FALSE(mute.getState());
  owner->getProgramListViewModel()->selectProgram(2, "Factory");
  owner->notifyAllParametersChanged();
  const auto bar = view().programBar().getChildren();
  EXPECT_TRUE(std::any_of(bar.begin(), bar.end(), [](juce::Component* child) {
    const auto* const text = dynamic_cast<PanelText*>(child);
    return text != nullptr && text->getText() == "03:third";
  }));
}

TEST_F(Panel, TellsAScreenReaderNamesAndTextsAndTakesTheTextsThatItReads) {
  automate(kPitch, 0.75F);
  auto& knob = dynamic_cast<BWImageKnob&>(*view().getControl(kPitch));
  EXPECT_EQ(knob.getTitle(), "macro4");
  EXPECT_FALSE(findIn<juce::ImageComponent>(knob)->isAccessible()) << "its picture, which has no name";
  const auto handler = knob.createAccessibilityHandler();
  juce::AccessibilityValueInterface& value = *handler->getValueInterface();
  EXPECT_EQ(value.getCurrentValueAsString(), "+12");
  for (const auto& [text, state] : {std::pair("-7", 17), std::pair(" 7", 31), std::pair("0", 24), std::pair("+25", 24),
                                    std::pair("loud", 24), std::pair("", 24)}) {
    value.setValueAsString(text);
    EXPECT_EQ(owner->getParameterValue(kPitch), static_cast<float>(state) / 48.0F) << text;
    EXPECT_EQ(value.getCurrentValueAsString().getIntValue(), state - 24);
  }
  auto& mute = dynamic_cast<BWToggleButton&>(*view().getControl(kMute));
  automate(kMute, 0.0F);
  mute.setState(true);  // A change is reported at once, before the model has handled it.
  EXPECT_EQ(mute.createAccessibilityHandler()->getValueInterface()->getCurrentValueAsString(), "On");
}

TEST_F(Panel, FollowsTheEngineWithoutAnEcho) {
  for (const std::uint64_t parameter : {std::uint64_t{0}, std::uint64_t{4}, std::uint64_t{96}, kMasterLevelMacro}) {
    instrument->setParameter(parameter, 1.0F);
    owner->notifyParameterChanged(parameter);
  }
  owner->notifyAllParametersChanged();
  EXPECT_EQ(takeHostLog(), Log{});
  auto* const knob = dynamic_cast<IBWContinuousStateControl*>(view().getControl(kPitch));
  EXPECT_EQ(knob->getValue(), 1.0F);
  EXPECT_EQ(slot.getNumChildComponents(), 1) << "an update from the engine shows no tooltip";
}

TEST_F(Panel, PaintsOneControlForAChangeAndNothingForNone) {
  owner->notifyAllParametersChanged();
  sivray::test::RepaintCounter repaints(slot);
  owner->notifyAllParametersChanged();
  EXPECT_EQ(repaints.take(), 0);
  instrument->setParameter(kPitch, 1.0F);
  owner->notifyParameterChanged(kPitch);
  EXPECT_EQ(repaints.takeArea(), juce::Rectangle<int>(34, 193, 55, 55));
  owner->getKeyboardViewModelOwner()->noteOn(36);
  EXPECT_EQ(repaints.takeArea(), juce::Rectangle<int>(27, 369, 72, 72));
}

TEST_F(Panel, HidesThePadsOnTheMixPageAloneAndStartsOnTheFirst) {
  juce::Component* const pad = named(slot, "Pad 1");
  ASSERT_NE(pad, nullptr);
  EXPECT_TRUE(view().getControl(kPitch)->isShowing() || view().getControl(kPitch)->getParentComponent()->isVisible());
  hand().click(453 + 36, 17 + 12);
  EXPECT_FALSE(pad->getParentComponent()->isVisible());
  EXPECT_TRUE(view().getControl(kLevel)->getParentComponent()->isVisible());
  EXPECT_FALSE(view().getControl(kPitch)->getParentComponent()->isVisible());
  hand().click(453 + 36, 17 + 12);  // The visible page stays visible.
  EXPECT_TRUE(view().getControl(kLevel)->getParentComponent()->isVisible());
  hand().click(363 + 36, 17 + 12);
  EXPECT_TRUE(pad->getParentComponent()->isVisible());
  EXPECT_TRUE(view().getControl(kPunch)->getParentComponent()->isVisible());
  EXPECT_EQ(takeHostLog(), Log{});
}

TEST_F(Panel, PlaysAPadWhileItIsPressedWithTheLeftButton) {
  instrument->resume();
  Hand(slot).rightButton().click(488 + 36, 369 + 20);
  EXPECT_EQ(takeHostLog(), Log{});
  hand().press(488 + 36, 369 + 20);
  EXPECT_EQ(takeHostLog(), (Log{"midi 902964@0"}));
  hand().click(27 + 36, 369 + 20);
  EXPECT_EQ(takeHostLog(), (Log{"midi 902464@0", "midi 902400@0"}));
}

TEST_F(Panel, EndsEditsAndNotesThatAHandHoldsWhenItCloses) {
  instrument->resume();
  const auto knob = middleOf(kPitch);
  hand().press(knob.x, knob.y);
  hand().press(488 + 36, 369 + 20);
  hand().click(27 + 36, 369 + 20);
  takeHostLog();
  component.reset();
  EXPECT_EQ(takeHostLog(), (Log{"midi 902900@0", "end 4"}));
}

TEST_F(Panel, LightsPadsByIncomingNotesAlsoWhileTheyAreHidden) {
  auto* const pad = dynamic_cast<IBWTwoStateControl*>(named(slot, "Pad 8"));
  view().selectPage(2);
  owner->getKeyboardViewModelOwner()->noteOn(43);
  owner->getKeyboardViewModelOwner()->noteOn(44);
  owner->getKeyboardViewModelOwner()->noteOn(36 + 256);
  EXPECT_TRUE(pad->getState());
  EXPECT_FALSE(dynamic_cast<IBWTwoStateControl*>(named(slot, "Pad 1"))->getState());
  owner->getKeyboardViewModelOwner()->noteOff(43);
  EXPECT_FALSE(pad->getState());
  EXPECT_EQ(takeHostLog(), Log{});
}

TEST_F(Panel, StepsTheGroupOnWithEachPressAndFlipsASwitch) {
  view().selectPage(2);
  std::vector<int> states;
  instrument->setParameter(kExclusiveGroup, 0.0F);
  owner->notifyParameterChanged(kExclusiveGroup);
  for (int press = 0; press < 4; ++press) {
    click(kExclusiveGroup);
    states.push_back(static_cast<int>(owner->getParameterValue(kExclusiveGroup) * 2.0F + 0.5F));
  }
  EXPECT_EQ(states, (std::vector<int>{1, 2, 0, 1}));
  takeHostLog();
  click(kMute);
  EXPECT_EQ(takeHostLog(), (Log{"begin 3", "automate 3", "end 3"}));
  EXPECT_EQ(owner->getParameterValue(kMute), 1.0F);
}

TEST_F(Panel, ChoosesAnEffectFromItsListAndNamesItsKnobs) {
  hand().click(317 + 70, 81 + 10);
  auto* const list = topPopup<BWSimpleListView>();
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->getParentComponent()->getBounds(), juce::Rectangle<int>(481, 12, 200, 360));
  const juce::Point<int> row = slot.getLocalPoint(list, juce::Point<int>(20, 28 * 2 + 10));
  list->selectRow(0);
  hand().click(row.x, row.y);
  EXPECT_EQ(takeHostLog(), (Log{"begin 96", "automate 96", "end 96"}));
  EXPECT_EQ(dynamic_cast<BWToggleButton&>(*named(slot, "Effect")).getText().getText(), "2Band EQ");
  EXPECT_EQ(slot.getNumChildComponents(), 2) << "the list stays open, and a control off the panel has no tooltip";
  automate(kEffectTypeMacro, 0.0F);
  hand().click(row.x, row.y);
  EXPECT_EQ(owner->getParameterValue(kEffectTypeMacro), 2.0F / 29.0F) << "the marked row, after a change elsewhere";
  list->selectRow(20);
  const auto place = slot.getLocalPoint(list, juce::Point<int>(20, 360 - 28 * (26 - 20) + 10));
  hand().click(place.x, place.y);
  EXPECT_EQ(owner->getParameterValue(kEffectTypeMacro), 20.0F / 29.0F);
  hand().click(10, 460);
  EXPECT_EQ(slot.getNumChildComponents(), 1);
}

TEST_F(Panel, ShowsATooltipForAMoveByHandWhichLetsClicksThrough) {
  const auto knob = middleOf(kEffectEdit1Macro);
  sivray::test::RepaintCounter repaints(slot);
  Hand held(slot);
  held.press(knob.x, knob.y);
  EXPECT_EQ(tooltip(), "----: 0") << "at once";
  held.drag(knob.x, knob.y - 40).release();
  ASSERT_EQ(slot.getNumChildComponents(), 2);
  const juce::Rectangle<int> place(496, 54, 55, 55);
  EXPECT_EQ(repaints.takeArea(), place.getUnion(slot.getChildComponent(1)->getBounds()));
  slot.getChildComponent(1)->setVisible(false);
  EXPECT_LT(repaints.takeArea().getHeight(), 50) << "nor is the panel painted when the tooltip goes";
  EXPECT_EQ(slot.getComponentAt(knob), view().getComponentAt(knob));
  EXPECT_NE(view().getComponentAt(knob), nullptr);
}

TEST_F(Panel, KeepsATooltipForASecondAfterItsLastMove) {
  const auto knob = middleOf(kPitch);
  const auto wait = [](int milliseconds) { juce::MessageManager::getInstance()->runDispatchLoopUntil(milliseconds); };
  const auto move = [&](int pixels) { hand().press(knob.x, knob.y).drag(knob.x, knob.y - pixels).release(); };
  move(10);
  const juce::String before = tooltip();
  EXPECT_NE(before, "");
  wait(600);
  move(-40);
  EXPECT_NE(tooltip(), before) << "it follows";
  wait(700);
  EXPECT_NE(tooltip(), "") << "the first second is over, the last one is not";
  wait(600);
  EXPECT_EQ(tooltip(), "");
  move(5);
  EXPECT_NE(tooltip(), "") << "it comes again";
}

bool showsText(juce::Component& parent, const juce::String& text) {
  const auto* const label = dynamic_cast<const juce::Label*>(&parent);
  return (label != nullptr && label->getText().contains(text)) ||
         std::any_of(parent.getChildren().begin(), parent.getChildren().end(),
                     [&](juce::Component* child) { return showsText(*child, text); });
}

#ifndef _WIN32
TEST_F(Panel, OpensTheGuidesPagesInTheBrowser) {
  const std::filesystem::path bin = folder.pathOf("bin");
  const std::filesystem::path opened = folder.pathOf("opened");
  std::filesystem::create_directories(bin);
  std::ofstream(bin / "xdg-open") << "#!/bin/sh\nprintf %s \"$1\" > '" << opened.string() << ".new' && mv '"
                                  << opened.string() << ".new' '" << opened.string() << "'\n";
  std::filesystem::permissions(bin / "xdg-open", std::filesystem::perms::owner_all);
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", (bin.string() + ":" + path).c_str(), 1);
  view().openSettings();
  clickOn(*named(slot, "Product Page"));
  EXPECT_TRUE(showsText(slot, "SivrayManual/manual.html")) << "a page that is not there is named";
  const std::filesystem::path pages = folder.pathOf("../SivrayManual");
  std::filesystem::create_directories(pages);
  std::ofstream(pages / "manual.html") << "page";
  std::ofstream(pages / "acknowledgements.html") << "page";
  for (const auto& [button, page] : {std::pair("Product Page", "SivrayManual/manual.html"),
                                     std::pair("Acknowledgements", "SivrayManual/acknowledgements.html")}) {
    clickOn(*named(slot, button));
    for (int i = 0; i < 500 && !std::filesystem::exists(opened); ++i) {
      juce::Thread::sleep(10);
    }
    std::string address;
    std::getline(std::ifstream(opened) >> std::ws, address);
    EXPECT_TRUE(address.starts_with("file:///") && address.ends_with(page)) << address;
    std::filesystem::remove(opened);
  }
  ::setenv("PATH", path.c_str(), 1);
}
#endif

TEST_F(Panel, OpensTheGuideFromBothZonesAndClosesItWithItsButton) {
  for (const juce::Point<int> zone : {juce::Point<int>(40, 30), juce::Point<int>(700, 30)}) {
    hand().click(zone.x, zone.y);
    ASSERT_EQ(slot.getNumChildComponents(), 2);
    juce::Component* const close = named(slot, "Close");
    ASSERT_NE(close, nullptr);
    clickOn(*close);
    EXPECT_EQ(slot.getNumChildComponents(), 1);
  }
}

TEST_F(Panel, HasPicturesOfItsOwnScaleBesideAnotherPanel) {
  const auto knobSide = [](juce::Component& panel) {
    return findIn<juce::ImageComponent>(*findIn<BWImageKnob>(panel))->getImage().getWidth();
  };
  const auto parts = plugin::sivray::SivrayEditorProvider().createEditor(instrument, 2);
  EXPECT_EQ(knobSide(**valueIn<std::shared_ptr<juce::Component>>(parts.view)), 2 * knobSide(view()));
}

TEST_F(Panel, ShowsTheSamePageAndPopupInAnotherScale) {
  const auto openEach = [this](const std::function<void()>& open) {
    open();
    view().selectPage(1);
    remake();
    EXPECT_TRUE(view().getControl(kPunch)->getParentComponent()->isVisible());
  };
  openEach([] {});
  EXPECT_EQ(slot.getNumChildComponents(), 1);
  EXPECT_EQ(findIn<juce::ImageComponent>(view())->getImage().getWidth(), 2 * 768);
  openEach([this] { view().openEffectList(); });
  EXPECT_NE(topPopup<BWSimpleListView>(), nullptr);
  openEach([this] { view().openSettings(); });
  EXPECT_NE(topPopup<BWPluginSettingsView>(), nullptr);
  openEach([this] {
    view().openSampleSelector(5);
    topPopup<BWSampleSelectorView>()->showCategory(3);
  });
  EXPECT_EQ(topPopup<BWSampleSelectorView>()->shownPart(), 5U);
  EXPECT_EQ(topPopup<BWSampleSelectorView>()->shownCategory(), 3);
  hand().click(5, 5);
  openEach([this] {
    view().programBar().openList();
    topPopup<BWProgramListView>()->showBank("User");
    topPopup<BWProgramListView>()->openSaveAs();
    topPopup<BWProgramListSaveAsView>()->nameEditor().setText("half a na");
  });
  EXPECT_EQ(topPopup<BWProgramListSaveAsView>()->nameEditor().getText(), "half a na");
  view().programBar().listStack()->popPage();
  EXPECT_EQ(topPopup<BWProgramListView>()->getShownBank(), "User");
}

TEST_F(Panel, SurvivesItsEndWithAPopupOpenAndATooltipUp) {
  const auto knob = middleOf(kPitch);
  hand().press(knob.x, knob.y).drag(knob.x, knob.y - 10);
  view().openSampleSelector(0);
  const std::weak_ptr<juce::Component> gone = component;
  component.reset();
  EXPECT_TRUE(gone.expired());
  owner->notifyAllParametersChanged();
  owner->getKeyboardViewModelOwner()->noteOn(36);
  EXPECT_EQ(slot.getNumChildComponents(), 0);
}

}  // namespace
}  // namespace views
