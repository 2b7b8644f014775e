// Devices that open, refuse, vanish, change their rate or fall silent, and what the program remembers of them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "host/standalone/Settings.h"
#include "host/standalone/SoundDevice.h"

namespace {

using namespace tesh::bramel::standalone;
using testing::ElementsAre;

/// What a device of the machine does; shared by all that open it.
struct Script {
  bool opens = true;
  bool plays = true;
  double rate = 48000.0;
  int block = 512;
  int starts = 0;
};

using Machine = std::map<juce::String, std::map<juce::String, Script>>;  ///< Devices by type and name.

class ScriptedDevice final : public juce::AudioIODevice {
 public:
  ScriptedDevice(const juce::String& deviceName, const juce::String& deviceType, Script& newScript)
      : AudioIODevice(deviceName, deviceType), script(newScript) {}

  juce::StringArray getOutputChannelNames() override { return {"left", "right"}; }
  juce::StringArray getInputChannelNames() override { return {}; }
  juce::Array<double> getAvailableSampleRates() override { return {8000.0, 44100.0, 48000.0}; }
  juce::Array<int> getAvailableBufferSizes() override { return {16, 64, 100, 512, 4096}; }
  int getDefaultBufferSize() override { return 512; }
  juce::String open(const juce::BigInteger& /*in*/, const juce::BigInteger& /*out*/, double rate, int block) override {
    script.rate = rate;
    script.block = block;
    opened = script.opens;
    return script.opens ? "" : "it is busy";
  }
  void close() override { opened = false; }
  bool isOpen() override { return opened; }
  void start(juce::AudioIODeviceCallback* newCallback) override {
    callback = newCallback;
    ++script.starts;
    callback->audioDeviceAboutToStart(this);
  }
  void stop() override {
    if (std::exchange(callback, nullptr) != nullptr) {
      stopped = true;
    }
  }
  bool isPlaying() override { return callback != nullptr && script.plays; }
  juce::String getLastError() override { return {}; }
  int getCurrentBufferSizeSamples() override { return script.block; }
  double getCurrentSampleRate() override { return script.rate; }
  int getCurrentBitDepth() override { return 32; }
  juce::BigInteger getActiveOutputChannels() const override { return 3; }
  juce::BigInteger getActiveInputChannels() const override { return 0; }
  int getOutputLatencyInSamples() override { return 0; }
  int getInputLatencyInSamples() override { return 0; }

 private:
  Script& script;
  bool opened = false;
  bool stopped = false;
  juce::AudioIODeviceCallback* callback = nullptr;
};

class ScriptedType final : public juce::AudioIODeviceType {
 public:
  ScriptedType(const juce::String& type, std::map<juce::String, Script>& newDevices)
      : AudioIODeviceType(type), devices(newDevices) {}

  void scanForDevices() override {}
  juce::StringArray getDeviceNames(bool wantInputs) const override {
    juce::StringArray names;
    for (const auto& [name, script] : devices) {
      names.add(name);
    }
    return wantInputs ? juce::StringArray() : names;
  }
  int getDefaultDeviceIndex(bool /*forInput*/) const override { return 0; }
  int getIndexOfDevice(juce::AudioIODevice* /*device*/, bool /*asInput*/) const override { return 0; }
  bool hasSeparateInputsAndOutputs() const override { return true; }
  juce::AudioIODevice* createDevice(const juce::String& name, const juce::String& /*input*/) override {
    return new ScriptedDevice(name, getTypeName(), devices[name]);
  }

 private:
  std::map<juce::String, Script>& devices;
};

class NoPlayer final : public juce::AudioIODeviceCallback {
 public:
  void audioDeviceAboutToStart(juce::AudioIODevice* device) override { rate = device->getCurrentSampleRate(); }
  void audioDeviceStopped() override {}
  double rate = 0.0;
};

class SoundDeviceTest : public testing::Test {
 protected:
  SoundDevice::Types types() {
    SoundDevice::Types result;
    for (const char* const type : {"JACK", "ALSA"}) {
      result.push_back(std::make_unique<ScriptedType>(type, machine[type]));
    }
    return result;
  }

  /// Seconds go by, in each of which the device plays some blocks.
  void wait(int seconds, bool playsBlocks = true) {
    for (int i = 0; i < seconds; ++i) {
      blocks += playsBlocks ? 90 : 0;
      sound.look();
    }
  }

  std::string text() const { return sound.describe().toStdString(); }

  Machine machine;
  NoPlayer player;
  std::uint64_t blocks = 0;
  SoundDevice sound{player, [this] { return blocks; }, [this] { return types(); }};
};

TEST_F(SoundDeviceTest, SaysThatThereIsNoDeviceUntilOneComes) {
  sound.open({});
  EXPECT_FALSE(sound.isOpen());
  EXPECT_EQ(text(), "No sound device found. Still looking");
  machine["ALSA"]["card"].opens = false;
  wait(1);
  EXPECT_EQ(text(), "No sound: card (ALSA): it is busy");
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
  EXPECT_EQ(sound.available().size(), 3U);
}

TEST_F(SoundDeviceTest, TakesAnotherDeviceWhenItsOwnIsLostAndComesBackToItLater) {
  machine["JACK"]["system"] = {};
  sound.open({.type = "JACK", .name = "system"});
  wait(3);
  EXPECT_TRUE(sound.isOpen());
  machine["JACK"]["system"].plays = false;
  wait(1);
  EXPECT_TRUE(sound.isOpen()) << "it may be on its way out of its last callback";
  machine["JACK"].clear();
  blocks += 1;
  wait(1);
  EXPECT_FALSE(sound.isOpen());
  EXPECT_EQ(text(), "The sound device is gone. Looking for another");
  machine["JACK"]["system"] = {};
  wait(1);
  EXPECT_EQ(text(), "JACK: system, 44100 Hz, 256 frames");
}

TEST_F(SoundDeviceTest, FollowsAServersRateAndTellsOfOneThatDoesNotAnswer) {
  machine["JACK"]["system"] = {};
  sound.open({});
  machine["JACK"]["system"].rate = 96000.0;
  wait(1);
  EXPECT_EQ(player.rate, 96000.0);
  EXPECT_EQ(text(), "JACK: system, 96000 Hz, 256 frames");
  EXPECT_EQ(machine["JACK"]["system"].starts, 2);
  wait(3, false);
  EXPECT_FALSE(sound.isOpen());
  EXPECT_EQ(text(), "No sound: JACK does not answer");
  wait(1);
  EXPECT_TRUE(sound.isOpen());
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
    settings.setDevice(choice);
    settings.setMidiNamesOff(off);
    settings.setPosition({-5, 70});
    EXPECT_TRUE(settings.saveState(state));
  }
  {
    const Settings settings(folder);
    EXPECT_EQ(settings.device(), choice);
    EXPECT_EQ(settings.midiNamesOff(), off);
    EXPECT_EQ(settings.position(), juce::Point<int>(-5, 70));
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
  folder.deleteRecursively();
  place.getFile().replaceWithText("a file where the folder should be");
  EXPECT_FALSE(Settings(folder).saveState(state));
}

}  // namespace
