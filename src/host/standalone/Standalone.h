// The whole program: the instrument, the devices that play it, and the window.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include <juce_core/juce_core.h>

#include "host/standalone/MidiInputs.h"
#include "host/standalone/SoundDevice.h"

namespace tesh::bramel::standalone {

/// The machine's devices.
struct Devices {
  SoundDevice::MakeTypes sound = SoundDevice::systemTypes;
  MidiSystem midi;
};

/// Shows the window and plays until it is destroyed. JUCE must be running with a screen. Message thread.
class Standalone {
 public:
  /// Restores setup and sound from `settingsFolder`. `onClosed` is called when the user wants to end the program.
  /// Throws std::runtime_error with one line that names the missing files.
  Standalone(const juce::File& settingsFolder, std::function<void()> onClosed, const Devices& devices = {});

  /// Saves the setup and the sound.
  ~Standalone();

  /// As above, without ending, for a process that may be ended at any moment.
  void remember();

  Standalone(const Standalone&) = delete;
  Standalone& operator=(const Standalone&) = delete;

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

/// Shows a line in a window and returns when the user has closed it, for a program that ends afterwards. Message
/// thread.
void showFault(const juce::String& text);

}  // namespace tesh::bramel::standalone
