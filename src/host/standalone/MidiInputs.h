// The machine's MIDI inputs. Where programs share inputs, all are open except those that the user has switched off. On
// Windows, where an input belongs to the program that opens it first, only those are open that the user has switched
// on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_devices/juce_audio_devices.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace tesh::bramel::standalone {

/// How the machine's inputs are listed and opened.
struct MidiSystem {
  std::function<juce::Array<juce::MidiDeviceInfo>()> list = juce::MidiInput::getAvailableDevices;
  /// Null if the input cannot be opened; otherwise it calls the callback until the result is destroyed.
  std::function<std::shared_ptr<void>(const juce::String& identifier, juce::MidiInputCallback&)> open =
      [](const juce::String& identifier, juce::MidiInputCallback& player) {
        std::shared_ptr<juce::MidiInput> input = juce::MidiInput::openDevice(identifier, &player);
        if (input != nullptr) {
          input->start();
        }
        return input;
      };
#ifdef _WIN32
  bool opensUnasked = false;
  const char* refusal = "in use by another program";
#else
  bool opensUnasked = true;                     ///< Inputs that the user has never switched are on.
  const char* refusal = "it cannot be opened";  ///< The likely reason why an input does not open.
#endif
};

/// Also opens devices that are plugged in later. Message thread only.
class MidiInputs : private juce::Timer {
 public:
  struct Device {
    juce::String name;
    bool isOn = true;    ///< The user wants it.
    bool isOpen = true;  ///< It plays. A device that is on but does not open is tried again from time to time.
    bool operator==(const Device&) const = default;
  };

  /// `player` outlives this object. Nothing is open until `start`.
  explicit MidiInputs(juce::MidiInputCallback& player, MidiSystem machine = {})
      : callback(player), system(std::move(machine)) {}

  /// Called after each change of `devices`.
  std::function<void()> onChange;

  /// Opens the devices that are on, and keeps looking for new ones. `newNamesSwitched` is what `namesSwitched` returned
  /// the last time.
  void start(const juce::StringArray& newNamesSwitched);

  void setOn(const juce::String& name, bool isOn);

  const std::vector<Device>& devices() const { return list; }
  /// Text for a device that is on but not open.
  const char* refusal() const { return system.refusal; }
  /// Names of the devices that the user has switched away from the default, including those that are not connected now.
  const juce::StringArray& namesSwitched() const { return switched; }

  /// Looks for inputs that have come or gone. Called by the timer and by tests.
  void look();

 private:
  void timerCallback() override { look(); }

  juce::MidiInputCallback& callback;
  MidiSystem system;
  juce::StringArray switched;
  std::vector<Device> list;
  std::map<juce::String, std::shared_ptr<void>> open;  ///< By identifier.
};

}  // namespace tesh::bramel::standalone
