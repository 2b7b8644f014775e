// What the program remembers between runs: the setup, the notes that it was taught, and the sound. Each is a file in
// one folder.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_data_structures/juce_data_structures.h>

#include <optional>

#include "host/standalone/SoundDevice.h"
#include "storage/notes/TaughtNotes.h"

namespace tesh::bramel::standalone {

/// The setup is saved soon after each change, the notes at once. A file is replaced in one step; a broken one counts as
/// empty. Message thread only.
class Settings {
 public:
  /// `newFolder` is created when something is saved.
  explicit Settings(const juce::File& newFolder);

  DeviceChoice device() const;
  void setDevice(const DeviceChoice& choice);

  /// In the form of MidiInputs::namesSwitched.
  juce::StringArray midiNamesSwitched() const;
  void setMidiNamesSwitched(const juce::StringArray& names);

  /// Empty before the first choice.
  juce::String noteMapName() const { return file.getValue("noteMap"); }
  void setNoteMapName(const juce::String& name) { file.setValue("noteMap", name); }

  /// Invalid lines are left out.
  TaughtNotes taughtNotes() const;
  void setTaughtNotes(const TaughtNotes& notes);

  /// Whether a sample sounds when it is chosen; true at first.
  bool hearsChoices() const { return file.getBoolValue("hearsChoices", true); }
  void setHearsChoices(bool hears) { file.setValue("hearsChoices", hears); }

  /// The top left corner of the window's content, in screen pixels; nothing before the first move.
  std::optional<juce::Point<int>> position() const;
  void setPosition(juce::Point<int> topLeft);

  /// The instrument's state in the bytes of a host's song; empty if none was saved yet.
  juce::MemoryBlock state() const;

  /// Writes at once, together with all other changes; false if the folder cannot be written to.
  bool saveState(const juce::MemoryBlock& bytes);

 private:
  juce::File stateFile;
  juce::File notesFile;
  juce::PropertiesFile file;
};

}  // namespace tesh::bramel::standalone
