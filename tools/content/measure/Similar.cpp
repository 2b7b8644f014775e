// All pairs of pictures, and the loudest moment of each wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Similar.h"

#include <algorithm>
#include <utility>

#include "content/Files.h"
#include "content/Parallel.h"
#include "content/RateConverter.h"
#include "content/measure/Loudness.h"
#include "content/measure/Picture.h"

namespace sivray::content {
namespace {

using tesh::vimo::SimilarWaves;
using tesh::vimo::WaveKin;

/// As long as the loudest moment of any hit is away, reversed ones too; also the least that loudness is measured over.
constexpr double kLoudSeconds = 4.0;
constexpr double kMomentSeconds = 0.4;

/// The start of a wave at the rate that measures take. Pictures and loudness need no more.
Wave startOf(const Wave& wave) {
  Wave start{wave.name, wave.category, wave.sampleRate, {}, {}};
  const auto frames = static_cast<std::size_t>(kLoudSeconds * wave.sampleRate);
  start.left.assign(wave.left.begin(),
                    wave.left.begin() + static_cast<std::ptrdiff_t>(std::min(frames, wave.left.size())));
  start.right.assign(wave.right.begin(),
                     wave.right.begin() + static_cast<std::ptrdiff_t>(std::min(frames, wave.right.size())));
  return start;
}

std::vector<float> sideOf(const std::vector<std::int16_t>& samples, int rate) {
  constexpr float kFullScale = 32768.0F;
  std::vector<float> side(samples.size());
  std::ranges::transform(samples, side.begin(),
                         [](std::int16_t sample) { return static_cast<float>(sample) / kFullScale; });
  if (rate != static_cast<int>(kMeasureRate)) {
    side = atRate(side, kMeasureRate / rate, RateQuality::fast);
  }
  side.resize(std::max(side.size(), static_cast<std::size_t>(kMomentSeconds * kMeasureRate)));
  return side;
}

float loudnessOf(const Wave& wave) {
  StereoSound sound;
  sound.left = sideOf(wave.left, wave.sampleRate);
  sound.right = wave.right.empty() ? sound.left : sideOf(wave.right, wave.sampleRate);
  return static_cast<float>(momentaryLoudness(sound));
}

/// The waves nearest to wave `own`, and the farthest of its category.
void findKin(std::span<const NumberedWave> waves, std::span<const Picture> pictures, std::size_t own, WaveKin& kin) {
  std::vector<std::pair<float, std::size_t>> others;
  std::pair<float, std::int32_t> farthest{-1.0F, -1};
  for (std::size_t other = 0; other < waves.size(); ++other) {
    if (other == own) {
      continue;
    }
    const float apart = distance(pictures[own], pictures[other]);
    others.emplace_back(apart, other);
    if (waves[other].wave->category == waves[own].wave->category && apart > farthest.first) {
      farthest = {apart, waves[other].number};
    }
  }
  const std::size_t count = std::min(WaveKin::kMost, others.size());
  std::ranges::partial_sort(others, others.begin() + static_cast<std::ptrdiff_t>(count));
  for (std::size_t i = 0; i < count; ++i) {
    kin.nearest.push_back(waves[others[i].second].number);
  }
  kin.farthest = farthest.second;
}

}  // namespace

std::vector<WaveKin> similarWaves(std::span<const NumberedWave> waves) {
  std::vector<Picture> pictures(waves.size());
  std::vector<WaveKin> kins(waves.size());
  onAllCores(waves.size(), [&] {
    return [&, maker = PictureMaker()](std::size_t i) mutable {
      const Wave start = startOf(*waves[i].wave);
      kins[i].wave = waves[i].number;
      kins[i].loudness = loudnessOf(start);
      pictures[i] = maker.pictureOf(hitOf(start));
    };
  });
  onAllCores(waves.size(), [&] { return [&](std::size_t i) { findKin(waves, pictures, i, kins[i]); }; });
  return kins;
}

void writeSimilar(const std::string& folder, std::span<const NumberedWave> waves) {
  const std::vector<std::uint8_t> index = readFile(folder + "/drumparam_category.bin");
  writeFile(folder + "/" + std::string(SimilarWaves::kFileName), SimilarWaves::pack(similarWaves(waves), index));
}

void writeSimilar(const std::string& folder, std::span<const Wave> waves) {
  std::vector<NumberedWave> numbered;
  for (const Wave& wave : waves) {
    numbered.push_back({static_cast<std::int32_t>(numbered.size()), &wave});
  }
  writeSimilar(folder, numbered);
}

}  // namespace sivray::content
