// The sound device of the program: opened as remembered or as found, watched, and opened again when it is lost.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_devices/juce_audio_devices.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tesh::bramel::standalone {

/// The device to open and its setup. Empty texts and zeros leave the choice to the program and the device.
struct DeviceChoice {
  juce::String type;  ///< "JACK", "ALSA" or a type of Windows.
  juce::String name;
  double rate = 0.0;     ///< Hz.
  int block = 0;         ///< Frames.
  bool hasOuts = false;  ///< With extra ports for each pad and the effect; JACK only.

  bool operator==(const DeviceChoice&) const = default;
};

/// Tries the wanted device first, then the first one of each type, in the order of the types. Message thread only.
class SoundDevice : private juce::Timer {
 public:
  using Types = std::vector<std::unique_ptr<juce::AudioIODeviceType>>;
  using MakeTypes = std::function<Types()>;

  /// The number of extra outputs of a device, for pads and effect; 0 for none. The device passes null for one that is
  /// not connected.
  static int moreOutputsOf(const juce::AudioIODevice& device);

  /// The system's device types; a running sound server's come before those of plain sound cards.
  static Types systemTypes();

  /// `player` must outlive this object. `countBlocks` returns the number of blocks played so far; the data that it uses
  /// must outlive this object, too.
  SoundDevice(juce::AudioIODeviceCallback& player, std::function<std::uint64_t()> countBlocks,
              MakeTypes makeTypes = systemTypes);
  ~SoundDevice() override;

  /// Called after each change of `describe`, `isOpen` or `current`.
  std::function<void()> onChange;

  /// Closes the device and opens the wanted one or another. From then on some device is kept open whenever there is
  /// one.
  void open(const DeviceChoice& wanted);

  bool isOpen() const { return device != nullptr && isAnswering; }

  /// What is open; empty while nothing is.
  DeviceChoice current() const;

  /// One line for the user: the open device, or why there is no sound.
  juce::String describe() const;

  /// The last device that failed to open before the open one, and why; empty if there was none.
  const juce::String& problem() const { return lastError; }

  /// All devices of the system, looked up again.
  std::vector<DeviceChoice> available();

  /// Sample rates in Hz and block sizes in frames of the open device.
  std::vector<double> rates() const;
  std::vector<int> blocks() const;

  /// Checks whether the device still plays, or looks for one if there is none. Called by the timer and by tests.
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
  Types olderTypes;  ///< Kept while open devices still use them.
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
