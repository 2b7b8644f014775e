// Recognises the kind of a folder and reads its waves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Sources.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "content/Files.h"
#include "content/Parallel.h"
#include "content/library/LibraryReader.h"
#include "content/pack/Packer.h"
#include "content/waves/FactoryWaves.h"

namespace sivray::content {
namespace {

std::vector<SourceWave> renderTables(const std::string& folder, const std::string& only) {
  std::vector<FactoryRow> rows = readFactoryRows(folder);
  std::erase_if(rows, [&](const FactoryRow& row) { return !only.empty() && row.row.name != only; });
  std::vector<SourceWave> waves(rows.size());
  onAllCores(rows.size(), [&] { return [&](std::size_t i) { waves[i] = {makeWave(rows[i]), groupOf(rows[i])}; }; });
  return waves;
}

SourceWave acoustic(Wave wave) {
  const auto group = groupOf(wave.category, wave.name, SoundSource::acoustic);
  return {std::move(wave), group};
}

}  // namespace

std::vector<SourceWave> readSourceWaves(const std::string& folder, const std::string& only) {
  const std::filesystem::path place = pathOf(folder);
  std::vector<SourceWave> waves;
  if (std::filesystem::exists(place / "numbers.txt")) {
    waves = renderTables(folder, only);
  } else if (std::filesystem::exists(place / "drumdata.bin")) {
    std::ranges::transform(readLibrary(folder), std::back_inserter(waves), acoustic);
  } else {
    for (PackedWave& packed : packFolder(folder, {}, {[](const std::string&) {}, [](double) {}}).waves) {
      waves.push_back(acoustic(std::move(packed.wave)));
    }
  }
  std::erase_if(waves, [&](const SourceWave& wave) { return !only.empty() && wave.wave.name != only; });
  if (waves.empty()) {
    throw std::runtime_error(folder + ": " +
                             (only.empty() ? "there is nothing to measure in it" : "it has no wave '" + only + "'"));
  }
  return waves;
}

}  // namespace sivray::content
