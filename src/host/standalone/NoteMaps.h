// Which notes of the MIDI inputs play which pads: a map by name, or the one that the user has taught the program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "core/NoteMap.h"
#include "host/standalone/Settings.h"

namespace tesh::bramel::standalone {

/// Message thread only.
class NoteMaps {
 public:
  /// Takes up the last choice. `newSettings` outlive this object.
  explicit NoteMaps(Settings& newSettings);

  /// The named maps, and last "Learn": General MIDI with the notes that were taught.
  static std::vector<std::string> names();
  static int learnedRow();

  int chosenRow() const { return row; }
  /// Rows out of range are ignored. Remembered.
  void choose(int newRow);

  /// From now on, and under "Learn", the note `drum` plays `padNote`. Both 0 to 127. Remembered.
  void teach(int drum, int padNote);

  cofu::core::NoteMap map() const;

 private:
  Settings& settings;
  int row = 0;
};

}  // namespace tesh::bramel::standalone
