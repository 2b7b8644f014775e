// The list of tables, the numbers of their waves, and the threads that render the rows.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/waves/FactoryWaves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>

#include "content/Parallel.h"
#include "content/synth/Math.h"
#include "content/waves/Finish.h"
#include "content/waves/Leveller.h"

namespace sivray::content {
namespace {

struct Table {
  std::string_view file;
  double loudness;  ///< Target loudness of its waves, in dB; see Leveller.h.
};

/// The tables by category. At the same peak, short and sharp sounds reach a lower loudness than long and dense ones. 90
/// % of a category's waves reach the target with so little soft clipping that their attacks are unchanged.
constexpr std::array<Table, kCategoryNames.size()> kTables{{{"kick.txt", -13.5},
                                                            {"snare.txt", -13.5},
                                                            {"clap.txt", -14.0},
                                                            {"close-hh.txt", -15.0},
                                                            {"open-hh.txt", -11.0},
                                                            {"tom.txt", -12.5},
                                                            {"cymbal.txt", -11.0},
                                                            {"perc.txt", -15.5},
                                                            {"fx.txt", -12.5},
                                                            {"hit.txt", -10.0}}};

constexpr std::string_view kNumbersFile = "numbers.txt";

std::string readText(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  if (!stream) {
    throw TableError(path.string(), 0, "cannot be read");
  }
  return text.str();
}

std::vector<std::int16_t> wordsOf(const Signal& signal) {
  std::vector<std::int16_t> words(signal.size());
  std::ranges::transform(signal, words.begin(),
                         [](double sample) { return static_cast<std::int16_t>(wholeBelow(sample * 32767.0 + 0.5)); });
  return words;
}

/// Returns the rows of all tables, by name. Throws TableError.
std::map<std::string, FactoryRow> readTables(const std::filesystem::path& folder) {
  std::map<std::string, FactoryRow> rows;
  for (std::size_t category = 0; category < kTables.size(); ++category) {
    const std::filesystem::path path = folder / kTables[category].file;
    for (WaveRow& row : parseWaveTable(readText(path), path.string())) {
      const auto [other, isNew] = rows.try_emplace(row.name, FactoryRow{static_cast<int>(category), row});
      if (!isNew) {
        const std::string_view file = kTables[static_cast<std::size_t>(other->second.category)].file;
        throw TableError(path.string(), row.line,
                         "the name '" + row.name + "' stands in " + std::string(file) + " already");
      }
    }
  }
  return rows;
}

}  // namespace

std::vector<FactoryRow> readFactoryRows(const std::filesystem::path& folder) {
  std::map<std::string, FactoryRow> named = readTables(folder);
  std::vector<FactoryRow> rows;
  const std::filesystem::path path = folder / kNumbersFile;
  std::istringstream lines(readText(path));
  int number = 0;
  for (std::string name; std::getline(lines, name);) {
    ++number;
    if (name.empty() || name.front() == '#') {
      continue;
    }
    auto row = named.extract(name);
    if (row.empty()) {
      throw TableError(path.string(), number, "no table has a wave '" + name + "', or it has a number already");
    }
    rows.push_back(std::move(row.mapped()));
  }
  if (!named.empty()) {
    const auto& [name, row] = *named.begin();
    throw TableError((folder / kTables[static_cast<std::size_t>(row.category)].file).string(), row.row.line,
                     "'" + name + "' has no number: " + std::string(kNumbersFile) + " names the waves in their order");
  }
  return rows;
}

Wave makeWave(const FactoryRow& factoryRow) {
  const WaveRow& row = factoryRow.row;
  Sound sound = makeSound(*row.model, row.parameters, seedOf(row.name));
  level(sound, kTables[static_cast<std::size_t>(factoryRow.category)].loudness + row.parameters["trim"]);
  Wave wave{row.name, factoryRow.category, static_cast<int>(kSampleRate), wordsOf(sound.front()), {}};
  if (sound.size() > 1) {
    wave.right = wordsOf(sound.back());
  }
  return wave;
}

std::vector<Wave> makeFactoryWaves(const std::filesystem::path& folder) {
  const std::vector<FactoryRow> rows = readFactoryRows(folder);
  std::vector<Wave> waves(rows.size());
  onAllCores(rows.size(), [&] { return [&](std::size_t i) { waves[i] = makeWave(rows[i]); }; });
  return waves;
}

}  // namespace sivray::content
