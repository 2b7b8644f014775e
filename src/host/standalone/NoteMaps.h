// Maps notes of the MIDI inputs to pads: by a named map, or by the one that the user has taught the program.
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
  /// Restores the last choice. `newSettings` outlives this object.
  explicit NoteMaps(Settings& newSettings);

  /// The named maps, then "Learn": General MIDI plus the notes that were taught.
  static std::vector<std::string> names();
  static int learnedRow();

  int chosenRow() const { return row; }
  /// Ignores rows out of range. The choice is saved.
  void choose(int newRow);

  /// Adds to the map "Learn" that the note `drum` plays `padNote`, both 0 to 127. Saved. Does not choose that map.
  void teach(int drum, int padNote);

  cofu::core::NoteMap map() const;

 private:
  Settings& settings;
  int row = 0;
};

}  // namespace tesh::bramel::standalone
