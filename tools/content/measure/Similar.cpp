// All pairs of pictures, and the loudest moment of each wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Similar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "content/Files.h"
#include "content/Parallel.h"
#include "content/RateConverter.h"
#include "content/measure/Loudness.h"
#include "content/measure/Picture.h"
#include "content/synth/Lanes.h"

namespace sivray::content {
namespace {

using tesh::vimo::SimilarWaves;
using tesh::vimo::WaveKin;

constexpr double kMomentSeconds = 0.4;  ///< The window of momentary loudness.

/// The number of pictures side by side, chosen so that one vector register holds their levels of one band and moment.
constexpr std::size_t kLanes = 8;
struct PictureLanes {
  std::array<std::array<float, kLanes>, kPictureMoments * kPictureBands> levels{};
  std::array<float, kLanes> floors{};
};

std::vector<PictureLanes> sideBySide(std::span<const Picture> pictures) {
  std::vector<PictureLanes> groups((pictures.size() + kLanes - 1) / kLanes);
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    PictureLanes& group = groups[i / kLanes];
    group.floors[i % kLanes] = pictures[i].floor;
    for (std::size_t place = 0; place < group.levels.size(); ++place) {
      group.levels[place][i % kLanes] = pictures[i].levels[place];
    }
  }
  return groups;
}

/// As `distance`, with the same bits.
std::array<float, kLanes> distances(const Picture& a, const PictureLanes& b) {
  std::array<float, kLanes> sums{};
  std::array<float, kLanes> places{};
  for (std::size_t place = 0; place < a.levels.size(); ++place) {
    const float level = a.levels[place];
    const bool isAbove = level > a.floor;
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const float other = b.levels[place][lane];
      const bool counts = isAbove || other > b.floors[lane];
      sums[lane] += counts ? std::abs(level - other) : 0.0F;
      places[lane] += counts ? 1.0F : 0.0F;
    }
  }
  for (std::size_t lane = 0; lane < kLanes; ++lane) {
    sums[lane] = places[lane] > 0.0F ? sums[lane] / places[lane] : 0.0F;
  }
  return sums;
}

/// Returns the first kComparedSeconds of a wave: pictures and loudness need no more.
Wave startOf(const Wave& wave) {
  Wave start{wave.name, wave.category, wave.sampleRate, {}, {}};
  const auto frames = static_cast<std::size_t>(kComparedSeconds) * static_cast<std::size_t>(wave.sampleRate);
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

/// Returns the waves nearest to wave `own`, and the farthest one of its category.
void findKin(std::span<const NumberedWave> waves, const Picture& picture, std::span<const PictureLanes> groups,
             std::size_t own, WaveKin& kin) {
  std::vector<std::pair<float, std::size_t>> others;
  others.reserve(waves.size());
  std::pair<float, std::int32_t> farthest{-1.0F, -1};
  for (std::size_t group = 0; group < groups.size(); ++group) {
    const auto apart = distances(picture, groups[group]);
    for (std::size_t other = group * kLanes; other < std::min((group + 1) * kLanes, waves.size()); ++other) {
      const float distance = apart[other % kLanes];
      if (other == own) {
        continue;
      }
      others.emplace_back(distance, other);
      if (waves[other].wave->category == waves[own].wave->category && distance > farthest.first) {
        farthest = {distance, waves[other].number};
      }
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
      kins[i].loudness = waves[i].loudness ? *waves[i].loudness : loudnessOf(start);
      pictures[i] = maker.pictureOf(hitOf(start));
    };
  });
  const std::vector<PictureLanes> groups = sideBySide(pictures);
  // runInLanes chooses the code compiled for AVX2, which handles all lanes of a picture at once. The type of its lanes
  // is unused.
  onAllCores(waves.size(), [&] {
    return [&](std::size_t i) { runInLanes([&](auto) { findKin(waves, pictures[i], groups, i, kins[i]); }); };
  });
  return kins;
}

void writeSimilar(const std::string& folder, std::span<const NumberedWave> waves) {
  const std::vector<std::uint8_t> index = readFile(folder + "/drumparam_category.bin");
  writeFile(folder + "/" + std::string(SimilarWaves::kFileName), SimilarWaves::pack(similarWaves(waves), index));
}

void writeSimilar(const std::string& folder, std::span<const Wave> waves) {
  std::vector<NumberedWave> numbered;
  for (const Wave& wave : waves) {
    numbered.push_back({static_cast<std::int32_t>(numbered.size()), &wave, {}});
  }
  writeSimilar(folder, numbered);
}

}  // namespace sivray::content
