// Stores the chosen map by its name.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/NoteMaps.h"

#include <algorithm>

namespace tesh::bramel::standalone {

NoteMaps::NoteMaps(Settings& newSettings) : settings(newSettings) {
  const auto all = names();
  const auto found = std::find(all.begin(), all.end(), settings.noteMapName().toStdString());
  row = found == all.end() ? 0 : static_cast<int>(found - all.begin());
}

std::vector<std::string> NoteMaps::names() {
  std::vector<std::string> result;
  for (const auto& [name, map] : cofu::core::namedNoteMaps()) {
    result.emplace_back(name);
  }
  result.emplace_back(kTaughtMapName);
  return result;
}

int NoteMaps::learnedRow() { return static_cast<int>(cofu::core::namedNoteMaps().size()); }

void NoteMaps::choose(int newRow) {
  const auto all = names();
  if (juce::isPositiveAndBelow(newRow, static_cast<int>(all.size()))) {
    row = newRow;
    settings.setNoteMapName(all[static_cast<std::size_t>(row)]);
  }
}

void NoteMaps::teach(int drum, int padNote) {
  auto taught = settings.taughtNotes();
  taught[static_cast<std::uint8_t>(drum)] = static_cast<std::uint8_t>(padNote);
  settings.setTaughtNotes(taught);
}

cofu::core::NoteMap NoteMaps::map() const {
  const auto& named = cofu::core::namedNoteMaps();
  if (row < learnedRow()) {
    return named[static_cast<std::size_t>(row)].map;
  }
  return noteMapOf(settings.taughtNotes());
}

}  // namespace tesh::bramel::standalone
