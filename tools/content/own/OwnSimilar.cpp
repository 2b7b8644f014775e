// Reads the starts of all waves that the browser lists.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/OwnSimilar.h"

#include <algorithm>
#include <vector>

#include "content/Files.h"
#include "content/measure/Similar.h"

namespace sivray::content {
namespace {

Wave startAt(const OwnContent& content, OwnStretch stretch, int category) {
  const std::uint32_t most = static_cast<std::uint32_t>(kComparedSeconds) * stretch.rate;
  stretch.frames = std::min(stretch.frames, most);
  Wave wave = content.waveAt(stretch);
  wave.category = category;
  return wave;
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
  std::vector<NumberedWave> numbered;
  for (std::size_t i = 0; i < waves.size(); ++i) {
    numbered.push_back({numbers[i], &waves[i]});
  }
  writeSimilar(textOf(content.paths().library), numbered);
}

}  // namespace sivray::content
