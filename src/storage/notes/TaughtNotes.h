// Which drums of the user's play which pads: what the program `sivray` has been taught, in a text file that users may
// edit, and that the renderer reads too.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "core/NoteMap.h"

namespace tesh::bramel {

/// The note of a pad by that of a drum; all 0 to 127.
using TaughtNotes = std::map<std::uint8_t, std::uint8_t>;

/// What the setup and the renderer call the map that was taught.
inline constexpr const char* kTaughtMapName = "Learn";

/// The file's name in the program's settings.
inline constexpr const char* kTaughtNotesFile = "notes.txt";

struct TaughtNotesText {
  TaughtNotes notes;   ///< Of all lines that hold; the last one counts for a drum.
  int faultyLine = 0;  ///< The first that does not hold, from 1; 0 if all do.
};

/// Takes lines such as "60=36", empty ones, and those that begin with #.
TaughtNotesText readTaughtNotes(std::string_view text);

/// A file's text.
std::string textOf(const TaughtNotes& notes);

/// General MIDI, but for the notes that were taught.
cofu::core::NoteMap noteMapOf(const TaughtNotes& notes);

}  // namespace tesh::bramel
