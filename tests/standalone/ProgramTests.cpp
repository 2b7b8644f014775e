// The whole program in its window: its settings, keyboard focus, and the strip's texts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "ProgramScene.h"
#include "host/editor/WindowKeys.h"
#include "host/standalone/Desktop.h"
#include "host/standalone/PadKeys.h"
#include "host/standalone/Settings.h"
#include "host/standalone/SetupView.h"
#include "hosting/HostWindow.h"
#include "support/Hand.h"
#include "support/KitFolder.h"
#include "views/BWPopupView.h"
#include "views/BWProgramListView.h"
#include "views/BWSampleSelectorView.h"

namespace {

using namespace tesh::bramel;
using namespace tesh::bramel::standalone;
using sivray::hosting::HostWindow;
using sivray::test::Hand;

/// Writes a demo of one bar at 120 BPM on the kit "Wet", with a note at its start.
void writeDemo(const std::filesystem::path& commonFiles) {
  juce::MidiMessageSequence track;
  track.addEvent(juce::MidiMessage::textMetaEvent(1, "program=Wet"), 0.0);
  track.addEvent(juce::MidiMessage::noteOn(10, 36, juce::uint8{100}), 0.0);
  track.addEvent(juce::MidiMessage::noteOff(10, 36), 4 * 96.0);
  juce::MidiFile midi;
  midi.setTicksPerQuarterNote(96);
  midi.addTrack(track);
  const std::filesystem::path folder = commonFiles / "Tesh/Bramel/Resource/SivrayDemo";
  std::filesystem::create_directories(folder);
  juce::FileOutputStream stream(juce::File((folder / "demo.mid").string()));
  midi.writeTo(stream);
}

class ProgramTest : public sivray::test::ProgramScene {
 protected:
  ProgramTest() {
    writeDemo(content.commonFiles());
    machine["JACK"]["system"] = {};
    machine["ALSA"]["card"] = {};
  }
  ~ProgramTest() override { program.reset(); }
  void SetUp() override {
    ProgramScene::SetUp();
    if (!HasFatalFailure()) {
      other.emplace();
      start(folder.getFile());
    }
  }

  void restart() {
    program.reset();
    start(folder.getFile());
  }

  juce::AudioProcessorParameter& level() { return *processor().getParameters()[1]; }
  bool isLit() { return button("Pad 1").getState(); }

  SetupView& openSetup() {
    button("Sound and MIDI").click();
    return *find<SetupView>(*window);
  }
  void focus() {
    ASSERT_TRUE(comesTrue([this] {
      void* const own = window->getPeer()->getNativeHandle();
      vst::giveKeyboardFocusTo(own);  // Has no effect before the window is shown.
      return vst::hasKeyboardFocus(own) && window->isActiveWindow();
    }));
    // The window counts as active before it receives the focus event, after which the focus moves once more inside it.
    // The mouse events arrive later.
    isAside = !isAside;
    const juce::Point<int> place(isAside ? 30 : 60, 10);
    other->moveTo({window->getX() + place.x, window->getY() + place.y});
    ASSERT_TRUE(comesTrue([&] { return window->getMouseXYRelative() == place; }));
  }

  const support::KitFolder content;
  juce::TemporaryFile folder{"sivray"};
  std::optional<HostWindow> other;  ///< Another program's window.
  bool isAside = false;             ///< Last position of the mouse.
};

TEST_F(ProgramTest, ComesBackWithSoundDeviceMidiAndPlace) {
  EXPECT_EQ(strip(), "JACK: system, 44100 Hz, 256 frames");
  level().setValueNotifyingHost(0.25F);
  window->setTopLeftPosition(70, 90);
  SetupView& setup = openSetup();
  Hand(setup).click(100, kFirstSetupRow + 28);
  Hand(setup).click(500, kFirstSetupRow);
  run();
  EXPECT_NE(find<SetupView>(*window), nullptr);
  EXPECT_EQ(strip(), "ALSA: card, 44100 Hz, 256 frames");
  restart();
  EXPECT_NEAR(level().getValue(), 0.25F, 0.01F);
  EXPECT_EQ(strip(), "ALSA: card, 44100 Hz, 256 frames");
  EXPECT_EQ(window->getPosition(), juce::Point(70, 90));
  EXPECT_EQ(Settings(folder.getFile()).midiNamesSwitched(), juce::StringArray("Keys"));
}

TEST_F(ProgramTest, EndsTheDemoWithTheUsersSoundAlsoTheSecondTimeAndAtItsEnd) {
  const auto play = [this](float value) {
    level().setValueNotifyingHost(value);
    run();
    button("Demo").click();
    EXPECT_TRUE(comesTrue([this] { return isLit(); })) << "the demo plays";
    EXPECT_EQ(processor().getCurrentProgram(), 1);
    EXPECT_GT(level().getValue(), 0.7F) << "on its kit";
  };
  for (const float value : {0.25F, 0.5F}) {
    play(value);
    button("Demo").click();
    run();
    EXPECT_NEAR(level().getValue(), value, 0.01F);
    EXPECT_FALSE(isLit());
  }
  play(0.125F);
  restart();
  EXPECT_NEAR(level().getValue(), 0.125F, 0.01F);
}

TEST_F(ProgramTest, KeysPlayUntilTheyComeUpOrTheFocusGoesAndNotWhileANameIsTyped) {
  focus();
  other->setKey('a', true);
  EXPECT_TRUE(comesTrue([this] { return isLit(); }));
  other->focusOwnChild();
  EXPECT_TRUE(comesTrue([this] { return !isLit(); })) << "nobody will hear the key come up";
  other->setKey('a', false);
  focus();
  other->strike(' ');
  EXPECT_TRUE(comesTrue([this] { return button("Demo").getState(); }));
  other->strike(' ');
  EXPECT_TRUE(comesTrue([this] { return !button("Demo").getState() && !isLit(); }));

  juce::TextEditor name;
  name.setBounds(10, 10, 100, 30);
  find<juce::AudioProcessorEditor>(*window)->addAndMakeVisible(name);
  name.grabKeyboardFocus();
  for (const char letter : {'a', ' ', 's'}) {
    other->strike(static_cast<unsigned long>(letter));
  }
  EXPECT_TRUE(comesTrue([&] { return name.getText() == "a s"; })) << name.getText();
  other->setKey('a', true);
  run();
  EXPECT_FALSE(isLit());
  EXPECT_FALSE(button("Demo").getState());
  other->setKey('a', false);

  juce::Component dialog;
  window->getChildComponent(0)->addAndMakeVisible(dialog);
  dialog.enterModalState(true);
  run();
  other->setKey('a', true);
  run();
  EXPECT_FALSE(isLit()) << "while a dialog asks something";
  other->setKey('a', false);
  dialog.exitModalState(0);
  run();
}

TEST_F(ProgramTest, ComesBackToTheMiddleIfItsScreenIsGone) {
  const juce::Point<int> middle = window->getPosition();
  Settings(folder.getFile()).setPosition({5000, 5000});
  program.reset();
  Settings(folder.getFile()).setPosition({5000, 5000});
  start(folder.getFile());
  EXPECT_EQ(window->getPosition(), middle);
}

TEST_F(ProgramTest, FollowsDevicesAndInputsThatComeAndGoUnderAnOpenSetup) {
  SetupView& setup = openSetup();
  machine["JACK"]["system"].plays = false;
  machine["JACK"]["system"].isThere = false;
  machine["ALSA"]["card"].isThere = false;
  EXPECT_TRUE(comesTrue([this] { return strip() == "The sound device is gone. Looking for another"; })) << strip();
  Hand(setup)
      .click(300, kFirstSetupRow)
      .click(350, kFirstSetupRow)
      .click(690, 20);  // Rates, blocks and tone of nothing.
  run();
  machine["ALSA"]["card"].isThere = true;
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("ALSA: card"); })) << strip();
  midi.list.add({"Pads", "2"});
  EXPECT_TRUE(comesTrue([this] { return midi.players.contains("2"); }));
  Hand(setup).click(500, kFirstSetupRow + 28);
  EXPECT_TRUE(comesTrue([this] { return !midi.players.contains("2"); })) << "the row of the input that came is there";
  midi.players["1"]->handleIncomingMidiMessage(nullptr, juce::MidiMessage::noteOn(1, 36, juce::uint8{100}));
  EXPECT_TRUE(comesTrue([this] { return isLit(); }));
}

TEST_F(ProgramTest, LearnsWhichDrumPlaysAPadAndRemembersIt) {
  const auto strikeDrum = [this](int note, bool isOn) {
    const auto message =
        isOn ? juce::MidiMessage::noteOn(1, note, juce::uint8{100}) : juce::MidiMessage::noteOff(1, note);
    midi.players["1"]->handleIncomingMidiMessage(nullptr, message);
  };
  Hand(openSetup()).click(650, kFirstSetupRow + 3 * 28);
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("Strike a pad"); })) << strip();
  EXPECT_EQ(find<SetupView>(*window), nullptr) << "the panel is free";
  strikeDrum(22, true);
  run();
  EXPECT_TRUE(strip().starts_with("Strike a pad")) << "of which pad?";
  Hand(button("Pad 1")).press(20, 20).release();
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("Now strike the drum of pad 1."); })) << strip();
  strikeDrum(22, true);
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("Note 22 plays pad 1."); })) << strip();
  button("Sound and MIDI").click();
  EXPECT_EQ(find<SetupView>(*window), nullptr) << "the click ends it";
  EXPECT_TRUE(strip().starts_with("JACK")) << strip();
  restart();
  EXPECT_FALSE(isLit());
  strikeDrum(22, true);
  EXPECT_TRUE(comesTrue([this] { return isLit(); }));
  strikeDrum(22, false);
  EXPECT_TRUE(comesTrue([this] { return !isLit(); }));
}

TEST_F(ProgramTest, LearnsWhichControllerMovesAKnobForAllInstances) {
  const auto move = [this](int controller, int value) {
    midi.players["1"]->handleIncomingMidiMessage(nullptr, juce::MidiMessage::controllerEvent(1, controller, value));
  };
  const auto isAt = [this](float value) { return std::abs(level().getValue() - value) < 0.01F; };
  move(7, 64);
  move(74, 20);
  run();
  const float before = level().getValue();
  Hand(openSetup()).click(650, kFirstSetupRow + 7 * 28);
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("Touch a knob"); })) << strip();
  level().beginChangeGesture();
  level().endChangeGesture();
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("Now move the controller of P1 Level."); })) << strip();
  EXPECT_FLOAT_EQ(level().getValue(), before) << "what came before the lesson counts for nothing";
  move(32, 20);
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("Controller 32 cannot be learnt: it selects banks."); }))
      << strip();
  move(74, 20);
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("Controller 74 moves P1 Level."); })) << strip();
  move(74, 127);
  EXPECT_TRUE(comesTrue([&] { return isAt(1.0F); }));
  button("Sound and MIDI").click();
  restart();
  move(74, 0);
  EXPECT_TRUE(comesTrue([&] { return isAt(0.0F); })) << "an instance that is made later reads it too";
}

TEST_F(ProgramTest, ASampleSoundsWhenItIsChosenUnlessTheUserOrTheDemoForbids) {
  const auto choose = [this](int row) {
    button("Sample of pad 1").click();
    Hand(*find<BWSampleSelectorView>(*window)).click(200, 76 + 14 + 28 * row);
    bool sounded = false;
    for (int round = 0; round < 10; ++round) {
      run(1);
      sounded = sounded || isLit();
    }
    EXPECT_TRUE(comesTrue([this] { return !isLit(); })) << "one stroke";
    find<BWSampleSelectorView>(*window)->findParentComponentOfClass<BWPopupView>()->close();
    return sounded;
  };
  EXPECT_TRUE(choose(1));
  EXPECT_TRUE(choose(1)) << "also the one that it has";
  Hand(openSetup()).click(650, kFirstSetupRow + 5 * 28);
  run();
  find<SetupView>(*window)->findParentComponentOfClass<BWPopupView>()->close();
  EXPECT_FALSE(choose(0));
  restart();
  EXPECT_FALSE(choose(1)) << "remembered";
}

TEST_F(ProgramTest, AListWithTheFocusTakesTheLettersAndThePadsOtherwise) {
  focus();
  button("Sample of pad 1").click();
  auto& browser = *find<BWSampleSelectorView>(*window);
  auto& list = *find<juce::ListBox>(browser, "Samples");
  // The server's late focus events for the window take the focus away once more.
  EXPECT_TRUE(comesTrue([&] {
    list.grabKeyboardFocus();
    run(10);
    return list.hasKeyboardFocus(true);
  }));
  other->setKey('a', true);
  run(10);
  EXPECT_FALSE(isLit());
  other->setKey('a', false);
  run();
  browser.findParentComponentOfClass<BWPopupView>()->close();
  other->setKey('a', true);
  EXPECT_TRUE(comesTrue([this] { return isLit(); }));
  other->setKey('a', false);
}

TEST_F(ProgramTest, ADialogOverAListOverThePanelTakesClicksAndEscapeFirst) {
  focus();
  const auto clickOn = [this](const juce::Component& target) {
    const juce::Point<int> place = target.getScreenBounds().getCentre();
    other->click({place.x, place.y});
    run();
  };
  const auto hasDialog = [this] { return find<juce::FileChooserDialogBox>(*window) != nullptr; };
  const auto hasList = [this] { return find<BWProgramListView>(*window) != nullptr; };
  const auto hasSetup = [this] { return find<SetupView>(*window) != nullptr; };
  clickOn(button("Kit"));
  ASSERT_TRUE(comesTrue(hasList));
  clickOn(button("User"));
  ASSERT_TRUE(comesTrue([this] { return find<BWButtonBase>(*window, "Import") != nullptr; }));
  clickOn(button("Import"));
  ASSERT_TRUE(comesTrue(hasDialog));
  clickOn(button("Sound and MIDI"));
  clickOn(button("Demo"));
  EXPECT_FALSE(hasSetup()) << "the dialog asks first";
  EXPECT_FALSE(button("Demo").getState());
  EXPECT_TRUE(hasDialog() && hasList());
  constexpr unsigned long kEscape = 0xFF1B;
  other->strike(kEscape);
  EXPECT_TRUE(comesTrue([&] { return !hasDialog(); }));
  EXPECT_TRUE(hasList()) << "one at a time";
  other->strike(kEscape);
  EXPECT_TRUE(comesTrue([&] { return !hasList(); }));
  clickOn(button("Sound and MIDI"));
  EXPECT_TRUE(comesTrue(hasSetup));
  clickOn(button("Pad 1"));
  EXPECT_TRUE(comesTrue([&] { return !hasSetup(); }));
  EXPECT_FALSE(isLit()) << "a click beside it closes it alone";
}

TEST_F(ProgramTest, SaysThatKitsCannotBeSavedUntilTheyCan) {
  const auto documents = content.commonFiles() / "documents";
  std::filesystem::remove_all(documents);
  std::ofstream(documents) << "a file where the folder should be";
  auto& instrument = *processor().instrument();
  instrument.saveProgramAs(3, "Mine");
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("Your kits cannot be saved in "); })) << strip();
  EXPECT_EQ(strip().find('\\'), std::string::npos);
  std::filesystem::remove(documents);
  instrument.saveProgramAs(3, "Mine");
  EXPECT_TRUE(comesTrue([this] { return strip().starts_with("JACK"); })) << strip();
}

}  // namespace
