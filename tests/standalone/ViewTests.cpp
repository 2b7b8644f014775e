// The strip and the setup with a simulated mouse, without a screen.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ScriptedSound.h"
#include "host/standalone/ProgramFonts.h"
#include "host/standalone/SetupView.h"
#include "host/standalone/TransportStrip.h"
#include "support/Hand.h"
#include "widgets/BWLabel.h"
#include "widgets/PanelColours.h"

namespace {

using namespace tesh::bramel::standalone;
using sivray::test::Hand;
using testing::ElementsAre;
using testing::IsEmpty;

class ViewTest : public sivray::test::SoundTest {
 protected:
  /// Returns the line below the setup's lists.
  static std::string lastLine(SetupView& view) {
    std::string line;
    for (juce::Component* const child : view.getChildren()) {
      if (const auto* const label = dynamic_cast<tesh::bramel::BWLabel*>(child)) {
        line = label->getText().toStdString();
      }
    }
    return line;
  }

  ProgramFonts fonts;
};

TEST_F(ViewTest, TheStripTellsOfItsButtonsAndShowsAFaultInAmber) {
  sivray::test::ControlLog log;
  TransportStrip strip(fonts, log);
  strip.setSize(768, TransportStrip::kHeight);
  log.names = {{&strip.demoButton(), "demo"}, {&strip.deviceButton(), "device"}};
  Hand(strip).click(60, 20).click(500, 20).click(200, 20);
  EXPECT_THAT(log.take(), ElementsAre("demo began", "demo changed", "demo ended", "device began", "device changed",
                                      "device changed", "device ended"));
  EXPECT_TRUE(strip.demoButton().getState());

  strip.demoButton().setState(false);
  const auto countAmber = [&] {
    const juce::Image picture = strip.createComponentSnapshot(strip.getLocalBounds());
    int count = 0;
    for (int x = 0; x < picture.getWidth(); ++x) {
      for (int y = 0; y < picture.getHeight(); ++y) {
        count += picture.getPixelAt(x, y) == juce::Colour(tesh::bramel::colours::kAmber) ? 1 : 0;
      }
    }
    return count;
  };
  strip.showDevice("JACK: system", false);
  EXPECT_EQ(countAmber(), 0);
  strip.showDevice("No sound device found", true);
  EXPECT_GT(countAmber(), 50);
}

TEST_F(ViewTest, TheSetupAsksForTheRowThatIsClickedAndShowsWhatIsOpen) {
  machine["JACK"]["system"] = {};
  machine["ALSA"]["card"] = {};
  sound.open({});
  std::vector<std::string> wishes;
  midi.list.add({"Pads", "2"});
  MidiInputs inputs(player, midi.system());
  inputs.start({"Pads"});
  const juce::TemporaryFile folder("sivray");
  Settings settings(folder.getFile());
  const NoteMaps noteMaps(settings);
  SetupView* shown = nullptr;
  SetupView view(sound, inputs, noteMaps, settings, fonts,
                 {.device =
                      [&](const DeviceChoice& choice) {
                        wishes.push_back((choice.type + " " + choice.name + " " + juce::String(choice.rate, 0) + " " +
                                          juce::String(choice.block))
                                             .toStdString());
                        sound.open(choice);
                        shown->refresh();
                      },
                  .midi = [&](const juce::String& name,
                              bool isOn) { wishes.push_back((isOn ? "on " : "off ") + name.toStdString()); },
                  .testTone = [&] { wishes.emplace_back("tone"); },
                  .notes = [&](int row) { wishes.push_back("notes " + std::to_string(row)); },
                  .hearsChoices = [&](bool hears) { wishes.emplace_back(hears ? "sound" : "silence"); },
                  .controllers = [&] { wishes.emplace_back("controllers"); }});
  shown = &view;
  view.setSize(SetupView::kWidth, SetupView::kHeight);
  const auto click = [&](int x, int y) {
    Hand(view).click(x, y);
    return std::exchange(wishes, {});
  };
  EXPECT_THAT(click(100, kFirstSetupRow), IsEmpty()) << "it is open already";
  EXPECT_THAT(click(100, kFirstSetupRow + 28), ElementsAre("ALSA card 0 0"));
  EXPECT_THAT(click(300, kFirstSetupRow + 56), ElementsAre("ALSA card 48000 256"));
  EXPECT_THAT(click(350, kFirstSetupRow), ElementsAre("ALSA card 48000 64"));
  machine["ALSA"]["other"] = {};
  machine["ALSA"]["other"].opens = false;
  view.refresh();
  EXPECT_THAT(click(100, kFirstSetupRow + 56), ElementsAre("ALSA other 0 0"));
  EXPECT_EQ(lastLine(view), "JACK: system, 44100 Hz, 256 frames.  Not opened: other (ALSA) does not open: it is busy");
  midi.list.clear();
  inputs.look();
  view.refresh();
  EXPECT_TRUE(lastLine(view).ends_with(".  No MIDI input found"));
  midi.list = juce::Array(juce::MidiDeviceInfo("Keys", "1"), juce::MidiDeviceInfo("Pads", "2"));
  inputs.look();
  view.refresh();
  EXPECT_THAT(click(690, 20), ElementsAre("tone"));
  EXPECT_THAT(click(500, kFirstSetupRow), ElementsAre("off Keys"));
  EXPECT_THAT(click(500, kFirstSetupRow + 28), ElementsAre("on Pads"));
  EXPECT_THAT(click(500, kFirstSetupRow + 56), IsEmpty());
  EXPECT_THAT(click(650, kFirstSetupRow + 56), ElementsAre("notes 2"));
  EXPECT_THAT(click(650, kFirstSetupRow + 56), ElementsAre("notes 2")) << "to learn again";
  EXPECT_THAT(click(650, kFirstSetupRow + 5 * 28), ElementsAre("silence"));
  EXPECT_THAT(click(650, kFirstSetupRow + 7 * 28), ElementsAre("controllers"));
}

}  // namespace
