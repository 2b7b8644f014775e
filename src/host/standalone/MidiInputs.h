// The machine's MIDI inputs. Where programs share them all play, but for those that the user has switched off; on
// Windows, where an input belongs to the program that opens it first, only those that the user has switched on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_devices/juce_audio_devices.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace tesh::bramel::standalone {

/// The inputs that the machine has, and how one is opened.
struct MidiSystem {
  std::function<juce::Array<juce::MidiDeviceInfo>()> list = juce::MidiInput::getAvailableDevices;
  /// Null if it does not open; else it plays on the callback until the result is let go.
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
  bool opensUnasked = true;                     ///< Inputs that the user has not switched are on.
  const char* refusal = "it cannot be opened";  ///< What an input that does not open most likely means.
#endif
};

/// Opens devices also when they are plugged in later. Message thread only.
class MidiInputs : private juce::Timer {
 public:
  struct Device {
    juce::String name;
    bool isOn = true;    ///< Wanted.
    bool isOpen = true;  ///< It plays. One that is on and does not open is tried again from time to time.
    bool operator==(const Device&) const = default;
  };

  /// `player` outlives this object. Nothing is open until `start`.
  explicit MidiInputs(juce::MidiInputCallback& player, MidiSystem machine = {})
      : callback(player), system(std::move(machine)) {}

  /// After each change of `devices`.
  std::function<void()> onChange;

  /// Opens the devices that are on, and looks for more from time to time. `newNamesSwitched` as `namesSwitched` gave it
  /// the last time.
  void start(const juce::StringArray& newNamesSwitched);

  void setOn(const juce::String& name, bool isOn);

  const std::vector<Device>& devices() const { return list; }
  /// What to say of a device that is on and not open.
  const char* refusal() const { return system.refusal; }
  /// Of the devices that the user has switched from what they usually are, also of those that are not there now.
  const juce::StringArray& namesSwitched() const { return switched; }

  /// Looks for inputs that have come or gone. The timer's work; for tests.
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
