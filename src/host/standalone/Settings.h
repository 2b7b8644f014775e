// What the program remembers from one start to the next: the setup, the notes that it was taught and the sound, a file
// each in one folder.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_data_structures/juce_data_structures.h>

#include <optional>

#include "host/standalone/SoundDevice.h"
#include "storage/notes/TaughtNotes.h"

namespace tesh::bramel::standalone {

/// The setup is saved soon after each change, the notes at once. Files are replaced in one step, and one that is broken
/// counts as empty. Message thread only.
class Settings {
 public:
  /// `newFolder` is made when something is saved.
  explicit Settings(const juce::File& newFolder);

  DeviceChoice device() const;
  void setDevice(const DeviceChoice& choice);

  /// As MidiInputs has them.
  juce::StringArray midiNamesSwitched() const;
  void setMidiNamesSwitched(const juce::StringArray& names);

  /// Empty before the first choice.
  juce::String noteMapName() const { return file.getValue("noteMap"); }
  void setNoteMapName(const juce::String& name) { file.setValue("noteMap", name); }

  /// Lines that do not hold are left out.
  TaughtNotes taughtNotes() const;
  void setTaughtNotes(const TaughtNotes& notes);

  /// Whether a sample sounds when it is chosen; at first it does.
  bool hearsChoices() const { return file.getBoolValue("hearsChoices", true); }
  void setHearsChoices(bool hears) { file.setValue("hearsChoices", hears); }

  /// Of the window's content, in the screen's pixels. Nothing before the first move.
  std::optional<juce::Point<int>> position() const;
  void setPosition(juce::Point<int> topLeft);

  /// The instrument's state, the bytes that a song keeps; empty before the first end.
  juce::MemoryBlock state() const;

  /// Writes at once, also what else has changed; false if the folder cannot be written to.
  bool saveState(const juce::MemoryBlock& bytes);

 private:
  juce::File stateFile;
  juce::File notesFile;
  juce::PropertiesFile file;
};

}  // namespace tesh::bramel::standalone
