// Reads and writes one line per drum.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/notes/TaughtNotes.h"

#include <optional>

#include "core/Text.h"
#include "core/Utf8.h"

namespace tesh::bramel {
namespace {

using cofu::core::readNumber;
using cofu::core::trimmed;

constexpr const char* kHead = "# The note of a drum, and the note of the pad that it plays, 36 to 43.\n";

std::optional<std::uint8_t> noteIn(std::string_view text) {
  const auto note = readNumber<std::uint8_t>(trimmed(text));
  return note && *note < cofu::core::kMidiNotes ? note : std::nullopt;
}

/// False for an invalid line.
bool takeLine(std::string_view line, TaughtNotes& notes) {
  const std::string_view content = trimmed(line);
  if (content.empty() || content.front() == '#') {
    return true;
  }
  const std::size_t equals = content.find('=');
  if (equals == std::string_view::npos) {
    return false;
  }
  const auto drum = noteIn(content.substr(0, equals));
  const auto pad = noteIn(content.substr(equals + 1));
  if (!drum || !pad) {
    return false;
  }
  notes[*drum] = *pad;
  return true;
}

}  // namespace

TaughtNotesText readTaughtNotes(std::string_view text) {
  text = cofu::core::withoutByteOrderMark(text);
  TaughtNotesText result;
  for (int line = 1; !text.empty(); ++line) {
    const std::size_t end = text.find('\n');
    if (!takeLine(text.substr(0, end), result.notes) && result.faultyLine == 0) {
      result.faultyLine = line;
    }
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return result;
}

std::string textOf(const TaughtNotes& notes) {
  std::string text = kHead;
  for (const auto& [drum, pad] : notes) {
    text += std::to_string(drum) + "=" + std::to_string(pad) + "\n";
  }
  return text;
}

cofu::core::NoteMap noteMapOf(const TaughtNotes& notes) {
  cofu::core::NoteMap map = cofu::core::namedNoteMaps().back().map;
  for (const auto& [drum, pad] : notes) {
    map.notes[drum] = pad;
  }
  return map;
}

}  // namespace tesh::bramel
