// The notes of a build: for each wave its name, and hashes of its sources and of its samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/factory/WaveBuild.h"

#include <iomanip>
#include <map>
#include <sstream>
#include <stdexcept>

#include "content/Files.h"
#include "content/Parallel.h"
#include "content/library/LibraryReader.h"
#include "content/waves/FactoryWaves.h"

namespace sivray::content {
namespace {

struct Note {
  std::uint64_t recipe = 0;   ///< Hash of the code and the row.
  std::uint64_t samples = 0;  ///< Hash of the wave that they gave.
};

std::uint64_t recipeOf(const FactoryRow& row, std::uint64_t code) {
  std::ostringstream text;
  text << code << '|' << row.category << '|' << row.row.name << '|' << row.row.model->name << '|'
       << row.row.parameters.text();
  return seedOf(text.str());
}

std::uint64_t sampleHashOf(const Wave& wave) {
  const auto bytesOf = [](const std::vector<std::int16_t>& side) {
    return std::string_view(reinterpret_cast<const char*>(side.data()), 2 * side.size());
  };
  std::ostringstream text;
  text << wave.category << '|' << wave.sampleRate << '|' << seedOf(bytesOf(wave.left)) << '|'
       << seedOf(bytesOf(wave.right));
  return seedOf(text.str());
}

std::string noteLineOf(const std::string& name, const Note& note) {
  std::ostringstream line;
  line << std::hex << std::setfill('0') << std::setw(16) << note.recipe << ' ' << std::setw(16) << note.samples << ' '
       << name << '\n';
  return line.str();
}

std::map<std::string, Note> readNotes(const std::string& file) {
  std::map<std::string, Note> notes;
  std::istringstream lines(readText(file));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    Note note;
    std::string name;
    if (words >> std::hex >> note.recipe >> note.samples && std::getline(words >> std::ws, name)) {
      notes.emplace(name, note);
    }
  }
  return notes;
}

/// The waves of an earlier build that match its notes, by the hashes of their sources. Empty if it left no library.
std::map<std::uint64_t, Wave> readEarlier(const EarlierBuild& earlier) {
  std::map<std::uint64_t, Wave> waves;
  try {
    const std::map<std::string, Note> notes = readNotes(earlier.notes);
    for (Wave& wave : readLibrary(earlier.library)) {
      const auto note = notes.find(wave.name);
      if (note != notes.end() && note->second.samples == sampleHashOf(wave)) {
        waves.emplace(note->second.recipe, std::move(wave));
      }
    }
  } catch (const std::exception&) {
    waves.clear();
  }
  return waves;
}

}  // namespace

WaveBuild buildWaves(const std::string& tables, const EarlierBuild& earlier) {
  const std::vector<FactoryRow> rows = readFactoryRows(pathOf(tables));
  const std::vector<std::uint8_t> code = readFile(earlier.code);
  const std::uint64_t codeHash = seedOf({reinterpret_cast<const char*>(code.data()), code.size()});
  std::map<std::uint64_t, Wave> kept = readEarlier(earlier);

  WaveBuild build;
  build.waves.resize(rows.size());
  std::vector<Note> notes(rows.size());
  std::vector<std::size_t> missing;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    notes[i].recipe = recipeOf(rows[i], codeHash);
    if (auto wave = kept.extract(notes[i].recipe); !wave.empty()) {
      build.waves[i] = std::move(wave.mapped());
    } else {
      missing.push_back(i);
    }
  }
  onAllCores(missing.size(),
             [&] { return [&](std::size_t i) { build.waves[missing[i]] = makeWave(rows[missing[i]]); }; });
  build.rendered = missing.size();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    notes[i].samples = sampleHashOf(build.waves[i]);
    build.notes += noteLineOf(rows[i].row.name, notes[i]);
  }
  return build;
}

}  // namespace sivray::content
