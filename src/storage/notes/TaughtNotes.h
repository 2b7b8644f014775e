// The note map that the user has taught the program `sivray`: which drum plays which pad. It is a text file that users
// may edit and that the renderer reads too.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "core/NoteMap.h"

namespace tesh::bramel {

/// The pad's note for each drum's note, all 0 to 127.
using TaughtNotes = std::map<std::uint8_t, std::uint8_t>;

/// Name of the taught map in the setup and the renderer.
inline constexpr const char* kTaughtMapName = "Learn";

/// Name of the file in the program's settings folder.
inline constexpr const char* kTaughtNotesFile = "notes.txt";

struct TaughtNotesText {
  TaughtNotes notes;   ///< From all valid lines; for a drum the last one counts.
  int faultyLine = 0;  ///< Number of the first invalid line, from 1; 0 if there is none.
};

/// Accepts lines such as "60=36", empty lines, and lines that begin with #.
TaughtNotesText readTaughtNotes(std::string_view text);

/// The text of a file with these notes.
std::string textOf(const TaughtNotes& notes);

/// General MIDI, changed by the taught notes.
cofu::core::NoteMap noteMapOf(const TaughtNotes& notes);

}  // namespace tesh::bramel
