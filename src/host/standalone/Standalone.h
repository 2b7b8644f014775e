// The program as a whole: the instrument, what plays it, and the window that shows it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include <juce_core/juce_core.h>

#include "host/standalone/MidiInputs.h"
#include "host/standalone/SoundDevice.h"

namespace tesh::bramel::standalone {

/// What the machine has.
struct Devices {
  SoundDevice::MakeTypes sound = SoundDevice::systemTypes;
  MidiSystem midi;
};

/// Shows the window and plays until it goes. JUCE must be running with a screen; on the message thread.
class Standalone {
 public:
  /// Takes up setup and sound of the last time from `settingsFolder`. `onClosed` hears that the user wants to end the
  /// program. Throws std::runtime_error with one line that says what is missing.
  Standalone(const juce::File& settingsFolder, std::function<void()> onClosed, const Devices& devices = {});

  /// Remembers the setup and the sound.
  ~Standalone();

  /// The same before its end, for a process that may end at any moment.
  void remember();

  Standalone(const Standalone&) = delete;
  Standalone& operator=(const Standalone&) = delete;

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

/// Shows a line in a window, and returns when the user has read it. For a program that then ends. On the message
/// thread.
void showFault(const juce::String& text);

}  // namespace tesh::bramel::standalone
