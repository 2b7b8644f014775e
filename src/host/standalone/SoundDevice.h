// The sound device that the program plays on: opened as remembered or as found, watched, and opened again when it is
// lost.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_devices/juce_audio_devices.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tesh::bramel::standalone {

/// Which device to open, and how. Empty texts and zeros leave the choice to the program and to the device.
struct DeviceChoice {
  juce::String type;  ///< "JACK", "ALSA" or a type of Windows.
  juce::String name;
  double rate = 0.0;     ///< Hz.
  int block = 0;         ///< Frames.
  bool hasOuts = false;  ///< With ports of its own for each pad and the effect; JACK alone.

  bool operator==(const DeviceChoice&) const = default;
};

/// Tries the wanted device first, then the first one of each type, in the order of the types. Message thread only.
class SoundDevice : private juce::Timer {
 public:
  using Types = std::vector<std::unique_ptr<juce::AudioIODeviceType>>;
  using MakeTypes = std::function<Types()>;

  /// How many outputs a device has behind its own: those of the pads and of the effect, or none. The device gives null
  /// for one that is not connected.
  static int moreOutputsOf(const juce::AudioIODevice& device);

  /// The types of this system, a running sound server's before plain sound cards'.
  static Types systemTypes();

  /// `player` and what `countBlocks` counts outlive this object. `countBlocks` gives the number of blocks played so
  /// far.
  SoundDevice(juce::AudioIODeviceCallback& player, std::function<std::uint64_t()> countBlocks,
              MakeTypes makeTypes = systemTypes);
  ~SoundDevice() override;

  /// After each change of what `describe`, `isOpen` or `current` tell.
  std::function<void()> onChange;

  /// Closes the device and opens another. From then on a device is kept open, whenever there is one.
  void open(const DeviceChoice& wanted);

  bool isOpen() const { return device != nullptr && isAnswering; }

  /// What is open; empty while nothing is.
  DeviceChoice current() const;

  /// The open device, or why there is no sound: one line for the user.
  juce::String describe() const;

  /// The last device that was tried in vain before the open one, and why; empty if there was none.
  const juce::String& problem() const { return lastError; }

  /// The devices to choose from, looked up anew.
  std::vector<DeviceChoice> available();

  /// Of the open device.
  std::vector<double> rates() const;
  std::vector<int> blocks() const;

  /// Looks whether the device still plays, and for a device while there is none. The timer's work; for tests.
  void look();

 private:
  void timerCallback() override { look(); }
  void openAny();
  bool openWanted();
  bool openDefault();
  bool tryToOpen(juce::AudioIODeviceType& type, const DeviceChoice& choice);
  void close();
  void watch();
  void followServer();
  void tell();

  juce::AudioIODeviceCallback& callback;
  std::function<std::uint64_t()> blockCount;
  MakeTypes typeMaker;
  Types types;
  Types olderTypes;  ///< Kept because open devices call them.
  DeviceChoice wantedChoice;
  DeviceChoice openChoice;
  std::unique_ptr<juce::AudioIODevice> device;
  juce::String lastError;  ///< Of the last device that did not open.
  bool wasLost = false;
  bool isAnswering = true;
  std::uint64_t seenBlocks = 0;
  int looksWithoutBlocks = 0;
  int looksWithoutPlaying = 0;
};

}  // namespace tesh::bramel::standalone
