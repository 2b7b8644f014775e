// Sound devices that follow a test's script.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "host/standalone/MidiInputs.h"
#include "host/standalone/SoundDevice.h"

namespace sivray::test {

using tesh::bramel::standalone::SoundDevice;

/// The behaviour of one of the machine's devices, shared by all objects that open it.
struct Script {
  bool isThere = true;
  bool opens = true;
  bool plays = true;
  double rate = 48000.0;
  int block = 512;
  int starts = 0;
  juce::AudioIODeviceCallback* player = nullptr;  ///< Set while the device plays.
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
    EXPECT_EQ(callback, nullptr) << "it plays already";
    script.player = callback = newCallback;
    ++script.starts;
    callback->audioDeviceAboutToStart(this);
  }
  void stop() override { script.player = callback = nullptr; }
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
      if (script.isThere) {
        names.add(name);
      }
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

class NoPlayer final : public juce::AudioIODeviceCallback, public juce::MidiInputCallback {
 public:
  void handleIncomingMidiMessage(juce::MidiInput* /*source*/, const juce::MidiMessage& /*message*/) override {}
  void audioDeviceAboutToStart(juce::AudioIODevice* device) override { rate = device->getCurrentSampleRate(); }
  void audioDeviceStopped() override {}
  double rate = 0.0;
};

/// A machine with the MIDI inputs in `list`, of which those in `players` are open.
struct ScriptedMidi {
  tesh::bramel::standalone::MidiSystem system() {
    return {.list = [this] { return list; },
            .open = [this](const juce::String& identifier, juce::MidiInputCallback& player) -> std::shared_ptr<void> {
              if (!opens) {
                return nullptr;
              }
              players[identifier] = &player;
              return {&players, [this, identifier](void*) { players.erase(identifier); }};
            }};
  }

  juce::Array<juce::MidiDeviceInfo> list{juce::MidiDeviceInfo("Keys", "1")};
  std::map<juce::String, juce::MidiInputCallback*> players;  ///< By identifier.
  bool opens = true;
};

/// A machine with the devices in `machine`, and the sound player that uses them.
class SoundTest : public testing::Test {
 protected:
  SoundDevice::Types types() {
    SoundDevice::Types result;
    for (const char* const type : {"JACK", "ALSA"}) {
      result.push_back(std::make_unique<ScriptedType>(type, machine[type]));
    }
    return result;
  }

  /// Lets seconds pass, in each of which the device plays some blocks.
  void wait(int seconds, bool playsBlocks = true) {
    for (int i = 0; i < seconds; ++i) {
      blocks += playsBlocks ? 90 : 0;
      sound.look();
    }
  }

  /// Returns the text that the user reads.
  std::string text() const { return sound.describe().toStdString(); }

  static constexpr int kFirstSetupRow = 40 + 28 + 14;  ///< The middle of the first row in the setup's lists.

  Machine machine;
  ScriptedMidi midi;
  NoPlayer player;
  std::uint64_t blocks = 0;
  SoundDevice sound{player, [this] { return blocks; }, [this] { return types(); }};
};

}  // namespace sivray::test
