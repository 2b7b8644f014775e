// The machine's MIDI inputs: all play, but for those that the user has switched off.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_devices/juce_audio_devices.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace tesh::bramel::standalone {

/// Opens devices also when they are plugged in later. Message thread only.
class MidiInputs : private juce::Timer {
 public:
  struct Device {
    juce::String name;
    bool isOn = true;
    bool operator==(const Device&) const = default;
  };

  /// Tells which inputs the machine has.
  using ListInputs = std::function<juce::Array<juce::MidiDeviceInfo>()>;

  /// `player` outlives this object. Nothing is open until `start`.
  explicit MidiInputs(juce::MidiInputCallback& player, ListInputs listInputs = juce::MidiInput::getAvailableDevices)
      : callback(player), machineInputs(std::move(listInputs)) {}

  /// After each change of `devices`.
  std::function<void()> onChange;

  /// Opens all devices but those of the names in `newNamesOff`, and looks for more from time to time.
  void start(const juce::StringArray& newNamesOff);

  void setOn(const juce::String& name, bool isOn);

  const std::vector<Device>& devices() const { return list; }
  /// Also those of devices that are not there now.
  const juce::StringArray& namesOff() const { return off; }

  /// Looks for inputs that have come or gone. The timer's work; for tests.
  void look();

 private:
  void timerCallback() override { look(); }

  juce::MidiInputCallback& callback;
  ListInputs machineInputs;
  juce::StringArray off;
  std::vector<Device> list;
  std::map<juce::String, std::unique_ptr<juce::MidiInput>> open;  ///< By identifier.
};

}  // namespace tesh::bramel::standalone
