// Devices that open, refuse, disappear, change their rate or become silent, and the settings that the program keeps.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ScriptedSound.h"
#include "host/standalone/MidiInputs.h"
#include "host/standalone/Settings.h"
#include "host/standalone/SoundDevice.h"

namespace {

using namespace tesh::bramel::standalone;
using sivray::test::SoundTest;
using testing::ElementsAre;

using SoundDeviceTest = SoundTest;

TEST_F(SoundDeviceTest, SaysThatThereIsNoDeviceUntilOneComes) {
  sound.open({});
  EXPECT_FALSE(sound.isOpen());
  EXPECT_EQ(text(), "No sound device found. Still looking");
  machine["ALSA"]["card"].opens = false;
  wait(1);
  EXPECT_EQ(text(), "No sound: card (ALSA) does not open: it is busy");
  machine["ALSA"]["card"].opens = true;
  int told = 0;
  sound.onChange = [&] { ++told; };
  wait(1);
  EXPECT_EQ(text(), "ALSA: card, 44100 Hz, 256 frames");
  EXPECT_EQ(told, 1);
}

TEST_F(SoundDeviceTest, OpensWhatIsRememberedElseARunningServerElseACard) {
  machine["JACK"]["system"] = {};
  machine["ALSA"]["card"] = {};
  machine["ALSA"]["other"] = {};
  sound.open({});
  EXPECT_EQ(sound.current().type, "JACK");
  sound.open({.type = "ALSA", .name = "other", .rate = 48000.0, .block = 64});
  EXPECT_EQ(text(), "ALSA: other, 48000 Hz, 64 frames");
  EXPECT_THAT(sound.blocks(), ElementsAre(64, 512)) << "sizes that nobody wants are not offered";
  sound.open({.type = "ALSA", .name = "gone", .rate = 96000.0});
  EXPECT_EQ(sound.current().type, "JACK");
  machine["JACK"]["system"].opens = false;
  sound.open({.type = "ALSA", .name = "other", .rate = 96000.0});
  EXPECT_EQ(text(), "ALSA: other, 44100 Hz, 256 frames") << "of a rate that the device lacks";
  machine["JACK"]["Sivray MIDI"] = {};
  EXPECT_EQ(sound.available().size(), 4U) << "JACK's with further outs, too, but not this program's own MIDI port";
  sound.open({.type = "JACK", .name = "system"});
  EXPECT_EQ(sound.current().type, "ALSA");
  EXPECT_EQ(sound.problem(), juce::String("system (JACK) does not open: it is busy"));
  machine["JACK"]["system"].opens = true;
  machine["JACK"]["a client"] = machine["JACK"]["other"] = {};
  sound.open({});
  EXPECT_EQ(sound.current().name, juce::String("system")) << "not a client of the server";
  EXPECT_EQ(sound.problem(), juce::String());
  sound.open({.type = "ALSA", .name = "other"});
  EXPECT_EQ(sound.current().type, "ALSA") << "not JACK's of the same name";
}

TEST_F(SoundDeviceTest, HasFurtherOutsOnJackAlone) {
  machine["JACK"]["system"] = {};
  machine["ALSA"]["card"] = {};
  sound.open({.type = "JACK", .name = "system", .hasOuts = true});
  EXPECT_EQ(text(), "JACK: system, 44100 Hz, 256 frames, an out for each pad");
  EXPECT_TRUE(sound.current().hasOuts);
  sound.open({.type = "ALSA", .name = "card", .hasOuts = true});
  EXPECT_EQ(text(), "ALSA: card, 44100 Hz, 256 frames");
  EXPECT_FALSE(sound.current().hasOuts);
  sound.open({.type = "JACK", .name = "system"});
  EXPECT_FALSE(sound.current().hasOuts);
}

TEST_F(SoundDeviceTest, TakesAnotherDeviceWhenItsOwnIsLostAndComesBackToItLater) {
  machine["JACK"]["system"] = {};
  sound.open({.type = "JACK", .name = "system"});
  wait(3);
  EXPECT_TRUE(sound.isOpen());
  machine["JACK"]["system"].plays = false;
  wait(1);
  EXPECT_TRUE(sound.isOpen()) << "it may be on its way out of its last callback";
  machine["JACK"]["system"].isThere = false;
  blocks += 1;
  wait(1);
  EXPECT_FALSE(sound.isOpen());
  EXPECT_EQ(text(), "The sound device is gone. Looking for another");
  sound.open({});
  EXPECT_EQ(text(), "No sound device found. Still looking") << "what the user has chosen was not lost";
  machine["JACK"]["system"] = {};
  wait(1);
  EXPECT_EQ(text(), "JACK: system, 44100 Hz, 256 frames");
  machine["JACK"]["system"].plays = false;
  wait(1);
  sound.open({});
  wait(1);
  EXPECT_TRUE(sound.isOpen()) << "each device is looked at twice";
}

TEST_F(SoundDeviceTest, FollowsAServersRateAndTellsOfOneThatDoesNotAnswer) {
  machine["JACK"]["system"] = {};
  sound.open({});
  machine["JACK"]["system"].rate = 96000.0;
  wait(1);
  EXPECT_EQ(player.rate, 96000.0);
  EXPECT_EQ(text(), "JACK: system, 96000 Hz, 256 frames");
  EXPECT_EQ(machine["JACK"]["system"].starts, 2);
  machine["JACK"]["system"].rate = 0.0;  // As after the end of a server.
  wait(1);
  EXPECT_EQ(text(), "JACK: system, 96000 Hz, 256 frames");
  machine["JACK"]["system"].rate = 96000.0;
  wait(2, false);
  sound.open({});
  wait(2, false);
  EXPECT_TRUE(sound.isOpen()) << "each device has three seconds";
  wait(3, false);
  EXPECT_FALSE(sound.isOpen());
  sound.open({});
  EXPECT_TRUE(sound.isOpen());
  wait(3, false);
  EXPECT_FALSE(sound.isOpen());
  EXPECT_EQ(text(), "No sound: JACK does not answer");
  wait(1);
  EXPECT_TRUE(sound.isOpen());
}

TEST(MidiInputs, AreAllOnButThoseSwitchedOffAlsoWhenTheyComeLater) {
  sivray::test::ScriptedMidi machine;
  sivray::test::NoPlayer player;
  MidiInputs midi(player, machine.system());
  const auto open = [&] {
    std::string identifiers;
    for (const auto& [identifier, to] : machine.players) {
      EXPECT_EQ(to, &player);
      identifiers += identifier.toStdString();
    }
    return identifiers;
  };
  int told = 0;
  midi.onChange = [&] { ++told; };
  midi.start({"Pads"});
  EXPECT_THAT(midi.devices(), ElementsAre(MidiInputs::Device{"Keys", true}));
  EXPECT_EQ(open(), "1");
  machine.list.add({"Pads", "2"});
  machine.list.add({"Drums", "3"});
  midi.look();
  midi.look();
  EXPECT_THAT(midi.devices(), ElementsAre(MidiInputs::Device{"Keys", true}, MidiInputs::Device{"Pads", false, false},
                                          MidiInputs::Device{"Drums", true}));
  EXPECT_EQ(open(), "13") << "one that comes later plays, one that is off does not";
  EXPECT_EQ(told, 2) << "nothing is told twice";
  midi.setOn("Pads", true);
  midi.setOn("Keys", false);
  EXPECT_EQ(midi.namesSwitched(), juce::StringArray("Keys"));
  EXPECT_EQ(open(), "23");
  machine.list.clear();
  midi.look();
  EXPECT_TRUE(midi.devices().empty());
  EXPECT_EQ(open(), "") << "one that is unplugged is let go, so that it plays when it comes again";
  EXPECT_EQ(midi.namesSwitched(), juce::StringArray("Keys")) << "it may come again";
  machine.opens = false;
  machine.list.add({"Pads", "2"});
  midi.look();
  EXPECT_THAT(midi.devices(), ElementsAre(MidiInputs::Device{"Pads", true, false}));
  told = 0;
  machine.opens = true;
  midi.look();
  EXPECT_EQ(open(), "2") << "what was busy is tried again";
  EXPECT_THAT(midi.devices(), ElementsAre(MidiInputs::Device{"Pads", true, true}));
  EXPECT_EQ(told, 1);
}

TEST(MidiInputs, AreOpenedByChoiceAloneWhereTheyAreExclusive) {
  sivray::test::ScriptedMidi machine;
  sivray::test::NoPlayer player;
  auto system = machine.system();
  system.opensUnasked = false;
  MidiInputs midi(player, system);
  machine.list.add({"Pads", "2"});
  midi.start({"Pads"});
  EXPECT_THAT(midi.devices(), ElementsAre(MidiInputs::Device{"Keys", false, false}, MidiInputs::Device{"Pads"}));
  midi.setOn("Keys", true);
  midi.setOn("Pads", false);
  EXPECT_EQ(midi.namesSwitched(), juce::StringArray("Keys"));
  EXPECT_TRUE(machine.players.size() == 1 && machine.players.contains("1"));
}

TEST(Settings, ComeBackAsTheyWereSavedAndABrokenFileCountsAsNone) {
  const juce::TemporaryFile place("sivray");
  const juce::File folder = place.getFile().getChildFile("configuration");
  const juce::File file = folder.getChildFile("settings.xml");
  const DeviceChoice choice{
      .type = "ALSA", .name = juce::String::fromUTF8("Gerät \"1\" <&>"), .rate = 96000.0, .block = 64};
  const juce::StringArray off{"Keys A", juce::String::fromUTF8("Tasten B ü")};
  const juce::MemoryBlock state("state\0bytes", 11);
  {
    Settings settings(folder);
    EXPECT_EQ(settings.device(), DeviceChoice());
    EXPECT_TRUE(settings.state().isEmpty());
    EXPECT_FALSE(settings.position());
    EXPECT_TRUE(settings.taughtNotes().empty());
    settings.setDevice(choice);
    settings.setMidiNamesSwitched(off);
    settings.setPosition({-5, 70});
    settings.setTaughtNotes({{22, 42}, {0, 127}});
    EXPECT_TRUE(settings.saveState(state));
  }
  {
    const Settings settings(folder);
    EXPECT_EQ(settings.device(), choice);
    EXPECT_EQ(settings.midiNamesSwitched(), off);
    EXPECT_EQ(settings.position(), juce::Point<int>(-5, 70));
    EXPECT_EQ(settings.taughtNotes(), (tesh::bramel::TaughtNotes{{22, 42}, {0, 127}}));
    EXPECT_EQ(settings.state(), state);
  }
  const juce::String text = file.loadFileAsString();
  for (const juce::String& broken : {text.substring(0, text.length() / 2), juce::String("\1\2\3"),
                                     text.replace("96000.0", "-1e300").replace("\"64\"", "\"-9\"")}) {
    file.replaceWithText(broken);
    Settings settings(folder);
    EXPECT_EQ(settings.device().rate, 0.0);
    EXPECT_EQ(settings.device().block, 0);
    settings.setDevice(choice);
    EXPECT_TRUE(settings.saveState({})) << "and is replaced";
    EXPECT_EQ(Settings(folder).device(), choice);
  }
  folder.getChildFile("notes.txt").replaceWithText("-1=42\r\n22=\r\n0=127\r\n22=128");
  EXPECT_EQ(Settings(folder).taughtNotes(), (tesh::bramel::TaughtNotes{{0, 127}}));
  folder.deleteRecursively();
  place.getFile().replaceWithText("a file where the folder should be");
  EXPECT_FALSE(Settings(folder).saveState(state));
}

}  // namespace
