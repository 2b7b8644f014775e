// Reads the start of each wave that the browser lists. The loudness of factory waves is already known.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/OwnSimilar.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <vector>

#include "content/Files.h"
#include "content/measure/Similar.h"
#include "engine/samples/SimilarWaves.h"
#include "platform/Files.h"

namespace sivray::content {
namespace {

Wave startAt(const OwnContent& content, OwnStretch stretch, int category) {
  const std::uint32_t most = static_cast<std::uint32_t>(kComparedSeconds) * stretch.rate;
  stretch.frames = std::min(stretch.frames, most);
  Wave wave = content.waveAt(stretch);
  wave.category = category;
  return wave;
}

/// Reads the installed library's loudness of the factory waves; the content with own sounds has the same waves.
tesh::vimo::SimilarWaves installedKins() {
  tesh::vimo::SimilarWaves kins;
  const std::filesystem::path library = OwnPaths::libraryIn(installedTree());
  const auto index = tesh::bramel::platform::readWhole(textOf(library / "drumparam_category.bin"));
  const auto bytes = tesh::bramel::platform::readWhole(textOf(library / tesh::vimo::SimilarWaves::kFileName));
  if (index && bytes) {
    kins.loadFrom(*bytes, *index);
  }
  return kins;
}

}  // namespace

void writeOwnSimilar(const OwnContent& content) {
  std::vector<std::int32_t> numbers;
  std::vector<Wave> waves;
  for (std::int32_t wave = 0; wave < content.tables().factoryWaves(); ++wave) {
    numbers.push_back(wave * kNumbersPerFactoryWave);
    waves.push_back(startAt(content, content.tables().factoryStretch(wave), content.tables().factoryCategory(wave)));
  }
  for (const OwnSound& sound : content.ledger().sounds) {
    const auto stretch = content.stretches().find(sound.number);
    if (!sound.isRemoved() && stretch != content.stretches().end()) {
      numbers.push_back(sound.number);
      waves.push_back(startAt(content, stretch->second, sound.category));
    }
  }
  const tesh::vimo::SimilarWaves kins = installedKins();
  const auto factoryWaves = static_cast<std::size_t>(content.tables().factoryWaves());
  std::vector<NumberedWave> numbered;
  for (std::size_t i = 0; i < waves.size(); ++i) {
    const auto* const kin = i < factoryWaves ? kins.of(static_cast<std::int32_t>(i)) : nullptr;
    numbered.push_back({numbers[i], &waves[i], kin == nullptr ? std::nullopt : std::optional(kin->loudness)});
  }
  writeSimilar(textOf(content.paths().library), numbered);
}

}  // namespace sivray::content
