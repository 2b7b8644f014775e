// Buttons, switches, radio groups and properties.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/Hand.h"
#include "widgets/BWFlatToggleButton.h"
#include "widgets/BWImageKnob.h"
#include "widgets/BWStubControl.h"
#include "widgets/BWToggleButton.h"
#include "widgets/BWToggleSwitch.h"
#include "widgets/BWVirtualToggleGroup.h"
#include "widgets/PanelColours.h"
#include "widgets/PropertyKeys.h"

namespace tesh::bramel {
namespace {

using sivray::test::ControlLog;
using sivray::test::Hand;
using sivray::test::RepaintCounter;
using testing::ElementsAre;
using testing::IsEmpty;

juce::Image plainImage(juce::Colour colour) {
  juce::Image image(juce::Image::ARGB, 8, 8, true);
  image.clear(image.getBounds(), colour);
  return image;
}

/// Calls a function at each call of one kind.
class Reaction : public IBWControlListener {
 public:
  std::function<void()> onChanged = [] {};
  std::function<void()> onBegan = [] {};
  std::function<void()> onEnded = [] {};
  void controlValueChanged(IBWControl& /*control*/) override { std::function<void()>{onChanged}(); }
  void controlGestureBegan(IBWControl& /*control*/) override { std::function<void()>{onBegan}(); }
  void controlGestureEnded(IBWControl& /*control*/) override { std::function<void()>{onEnded}(); }
};

TEST(Properties, AreFoundByNameAndTypeAlone) {
  BWStubSwitch control;
  EXPECT_EQ(property<std::uint64_t>(control, keys::kIndex), std::nullopt);
  control.setProperty(keys::kIndex, makeBox(std::uint64_t{12}));
  EXPECT_EQ(property<std::uint64_t>(control, keys::kIndex), 12U);
  EXPECT_EQ(property<int>(control, keys::kIndex), std::nullopt);
  EXPECT_EQ(property<std::uint64_t>(control, keys::kSample), std::nullopt);
  control.setProperty(keys::kIndex, makeBox(3));
  EXPECT_EQ(property<int>(control, keys::kIndex), 3);
  EXPECT_EQ(property<std::uint64_t>(control, keys::kIndex), std::nullopt);
  control.setProperty(keys::kIndex, nullptr);
  EXPECT_EQ(property<int>(control, keys::kIndex), std::nullopt);
}

class ToggleButton : public testing::Test {
 protected:
  ToggleButton() {
    button.setSize(20, 20);
    button.setListener(&log);
  }
  ControlLog log;
  BWToggleButton button;
};

TEST_F(ToggleButton, ALatchChangesOnPressAndTellsOnce) {
  Hand hand(button);
  hand.press(5, 5);
  EXPECT_TRUE(button.getState());
  EXPECT_THAT(log.take(), ElementsAre("began", "changed"));
  hand.release();
  EXPECT_TRUE(button.getState());
  EXPECT_THAT(log.take(), ElementsAre("ended"));
  hand.click(5, 5);
  EXPECT_FALSE(button.getState());
}

TEST_F(ToggleButton, AMomentaryOneIsOnWhileHeldAndTellsTwice) {
  button.setMomentary(true);
  Hand hand(button);
  hand.press(5, 5);
  EXPECT_TRUE(button.getState());
  hand.release();
  EXPECT_FALSE(button.getState());
  EXPECT_THAT(log.take(), ElementsAre("began", "changed", "changed", "ended"));
}

TEST_F(ToggleButton, SettersOtherButtonsAndDisabledOnesTellNothing) {
  button.setState(true);
  Hand(button).rightButton().click(5, 5);
  EXPECT_TRUE(button.getState());
  button.setEnabled(false);
  EXPECT_EQ(button.getAlpha(), colours::kDisabledAlpha);
  Hand(button).click(5, 5);
  button.click();
  EXPECT_TRUE(button.getState());
  EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(ToggleButton, OneHandAtATimeHoldsIt) {
  button.setMomentary(true);
  Hand first(button);
  first.press(5, 5);
  log.take();
  Hand(button).press(5, 5);
  button.click();
  EXPECT_THAT(log.take(), IsEmpty());
  first.release();
  EXPECT_THAT(log.take(), ElementsAre("changed", "ended"));
  first.release();
  EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(ToggleButton, ShowsItsImagesAndADarkerOneWhilePressed) {
  const juce::Image off = plainImage(juce::Colour(200, 100, 50));
  const juce::Image on = plainImage(juce::Colour(50, 200, 100));
  button.setMomentary(true);
  Hand hand(button);
  hand.press(5, 5);
  button.setImages(makeImageSet({off, on}));
  EXPECT_EQ(button.getImage(), on);
  hand.release();
  EXPECT_EQ(button.getImage(), off);
  button.setShowPressed(true);
  hand.press(5, 5);
  EXPECT_EQ(button.getImage().getPixelAt(3, 3), juce::Colour(50, 200, 100).darker(0.3F));
  button.setState(false);
  EXPECT_EQ(button.getImage().getPixelAt(3, 3), juce::Colour(200, 100, 50).darker(0.3F));
  hand.release();
  EXPECT_EQ(button.getImage(), off);
  const juce::Image pressed = plainImage(juce::Colours::red);
  button.setPressedOnImage(pressed);
  hand.press(5, 5);
  EXPECT_EQ(button.getImage(), pressed);
}

TEST_F(ToggleButton, RepaintsWhenItsPictureChanges) {
  button.setOffImage(plainImage(juce::Colours::red));
  button.setOnImage(plainImage(juce::Colours::blue));
  RepaintCounter repaints(button);
  button.setState(false);
  EXPECT_EQ(repaints.take(), 0);
  button.setState(true);
  EXPECT_EQ(repaints.take(), 1);
}

TEST(Button, MayBeDeletedInEachOfItsCalls) {
  for (std::function<void()> Reaction::*const call : {&Reaction::onBegan, &Reaction::onChanged, &Reaction::onEnded}) {
    Reaction reaction;
    auto button = std::make_unique<BWFlatToggleButton>();
    button->setSize(20, 20);
    button->setMomentary(true);
    button->setListener(&reaction);
    reaction.*call = [&button] { button.reset(); };
    Hand(*button).click(5, 5);
    EXPECT_EQ(button, nullptr);
  }
}

TEST(FlatToggleButton, TakesTheColoursOfItsState) {
  BWFlatToggleButton button;
  button.setSize(20, 20);
  button.setOffColours({juce::Colours::red, {}, juce::Colours::white});
  button.setOnColours({juce::Colours::blue, {}, juce::Colours::white});
  const auto middle = [&button] { return button.createComponentSnapshot({0, 0, 20, 20}).getPixelAt(10, 10); };
  EXPECT_EQ(middle(), juce::Colours::red);
  button.setState(true);
  EXPECT_EQ(middle(), juce::Colours::blue);
  button.setText("Save");
  EXPECT_EQ(button.getTitle(), "Save");
}

class ToggleSwitch : public testing::Test {
 protected:
  ToggleSwitch() {
    control.setSize(33, 18);
    control.setListener(&log);
    control.setImages(makeImageSet(
        {plainImage(juce::Colours::red), plainImage(juce::Colours::green), plainImage(juce::Colours::blue)}));
  }
  ControlLog log;
  BWToggleSwitch control;
};

TEST_F(ToggleSwitch, EachPressIsOneStateOnAndWraps) {
  Hand hand(control);
  std::vector<std::uint64_t> states;
  for (int i = 0; i < 3; ++i) {
    hand.press(5, 5).drag(30, 2).release();
    states.push_back(control.getState());
  }
  EXPECT_THAT(states, ElementsAre(1, 2, 0));
  log.take();
  hand.click(5, 5);
  EXPECT_THAT(log.take(), ElementsAre("changed", "began", "ended"));
  EXPECT_EQ(control.getImage().getPixelAt(1, 1), juce::Colours::green);
}

TEST_F(ToggleSwitch, ItsSetterIsSilentAndOtherButtonsDoNothing) {
  control.setState(2);
  EXPECT_EQ(control.getImage().getPixelAt(1, 1), juce::Colours::blue);
  Hand(control).rightButton().click(5, 5);
  EXPECT_EQ(control.getState(), 2U);
  EXPECT_THAT(log.take(), IsEmpty());
  BWToggleSwitch bare;
  bare.setSize(33, 18);
  Hand(bare).click(5, 5);
  EXPECT_EQ(bare.getState(), 0U);
}

TEST(ScreenReader, ReadsAndMovesControlsAsAHandDoes) {
  ControlLog log;
  BWImageKnob knob;
  log.names[&knob] = "knob";
  knob.setListener(&log);
  knob.setTitle("Pitch");
  knob.setValue(0.25F);
  const auto handler = knob.createAccessibilityHandler();
  juce::AccessibilityValueInterface& value = *handler->getValueInterface();
  EXPECT_EQ(handler->getTitle(), "Pitch");
  EXPECT_EQ(value.getCurrentValueAsString(), "0.25");
  knob.setValueText([] { return juce::String("-12"); });
  EXPECT_EQ(value.getCurrentValueAsString(), "-12");
  value.setValue(0.75);
  EXPECT_EQ(knob.getValue(), 0.75F);
  EXPECT_THAT(log.take(), ElementsAre("knob began", "knob changed", "knob ended"));
  value.setValueAsString("0.5");
  EXPECT_EQ(knob.getValue(), 0.5F) << "a number, as long as nobody reads texts";
  knob.setValueOfText([](const juce::String& text) { return text == "+12" ? std::optional(0.75F) : std::nullopt; });
  value.setValueAsString("+12");
  EXPECT_EQ(knob.getValue(), 0.75F);
  value.setValueAsString("0.5");
  EXPECT_EQ(knob.getValue(), 0.75F);
  log.take();

  BWToggleButton button;
  log.names[&button] = "button";
  button.setListener(&log);
  const auto toggle = button.createAccessibilityHandler();
  EXPECT_TRUE(toggle->getActions().invoke(juce::AccessibilityActionType::toggle));
  EXPECT_TRUE(toggle->getCurrentState().isChecked());
  EXPECT_EQ(toggle->getValueInterface()->getCurrentValueAsString(), "on");
  EXPECT_FALSE(button.getText().isAccessible()) << "the title says it";
  EXPECT_THAT(log.take(), ElementsAre("button began", "button changed", "button ended"));
}

TEST(Switch, MayBeDeletedByItsListener) {
  Reaction reaction;
  auto control = std::make_unique<BWToggleSwitch>();
  control->setSize(33, 18);
  control->setImages(makeImageSet(std::vector<juce::Image>(3)));
  control->setListener(&reaction);
  reaction.onChanged = [&control] { control.reset(); };
  Hand(*control).click(5, 5);
  EXPECT_EQ(control, nullptr);
}

class ToggleGroup : public testing::Test {
 protected:
  ToggleGroup() {
    for (auto& button : buttons) {
      button = std::make_shared<BWToggleButton>();
      button->setSize(20, 20);
    }
    group->setListener(&log);
    group->setButtons({buttons.begin(), buttons.end()});
  }
  std::string states() const {
    std::string text;
    for (const auto& button : buttons) {
      text += button->getState() ? '1' : '0';
    }
    return text;
  }

  ControlLog log;
  std::array<std::shared_ptr<BWToggleButton>, 3> buttons;
  std::unique_ptr<BWVirtualToggleGroup> group = std::make_unique<BWVirtualToggleGroup>();
};

TEST_F(ToggleGroup, OneButtonIsOnAndItsChangeIsToldOnce) {
  EXPECT_EQ(states(), "100");
  Hand(*buttons[2]).click(5, 5);
  EXPECT_EQ(states(), "001");
  EXPECT_EQ(group->getState(), 2U);
  EXPECT_THAT(log.take(), ElementsAre("began", "changed", "ended"));
  Hand(*buttons[2]).click(5, 5);
  EXPECT_EQ(states(), "001");
  EXPECT_THAT(log.take(), ElementsAre("began", "ended"));
}

TEST_F(ToggleGroup, ASetStateIsSilentAndLeavesTheNextPressToBeTold) {
  group->setState(1);
  EXPECT_EQ(states(), "010");
  group->setState(3);
  EXPECT_EQ(group->getState(), 1U);
  EXPECT_THAT(log.take(), IsEmpty());
  const auto expectTold = [this](std::size_t button, bool isNews) {
    Hand(*buttons[button]).click(5, 5);
    const auto told = log.take();
    EXPECT_EQ(std::count(told.begin(), told.end(), "changed"), isNews ? 1 : 0);
  };
  expectTold(1, true);  // It was on already, but no listener was notified.
  expectTold(1, false);
  group->setState(2);
  expectTold(1, true);
  group->setState(0);
  expectTold(1, true);
}

TEST_F(ToggleGroup, MayBeDeletedInACallAndLeavesItsButtons) {
  Reaction reaction;
  group->setListener(&reaction);
  reaction.onBegan = [this] { group.reset(); };
  Hand(*buttons[1]).click(5, 5);
  EXPECT_EQ(group, nullptr);
  Hand(*buttons[2]).click(5, 5);
  EXPECT_EQ(states(), "011");
}

}  // namespace
}  // namespace tesh::bramel
