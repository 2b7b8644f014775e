// The bands, the moments and the level of a picture.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Picture.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace sivray::content {
namespace {

constexpr int kOrder = 10;  // 1024 samples, 23 ms: short enough for an attack, long enough for bands of 40 Hz.
constexpr double kLowestHertz = 40.0;
constexpr double kHighestHertz = 16000.0;
constexpr float kRangeDecibels = 60.0F;

/// The centres of the transforms.
constexpr std::array<int, kPictureMoments> kMilliseconds{0,   4,   8,   14,  22,  32,  45,  60, 80,
                                                         105, 140, 180, 230, 290, 370, 470, 580};

double melOf(double hertz) { return 2595.0 * std::log10(1.0 + hertz / 700.0); }

double hertzOf(double mel) { return 700.0 * (std::pow(10.0, mel / 2595.0) - 1.0); }

/// Returns the bin, with its fraction, of an edge between bands. Edge k is the low end of band k and the centre of band
/// k - 1.
double binOfEdge(std::size_t edge, std::size_t size) {
  const double low = melOf(kLowestHertz);
  const double step = (melOf(kHighestHertz) - low) / static_cast<double>(kPictureBands + 1);
  return hertzOf(low + step * static_cast<double>(edge)) * static_cast<double>(size) / kMeasureRate;
}

float decibelsOf(float power) { return 10.0F * std::log10(power); }

}  // namespace

PictureMaker::PictureMaker() : spectrum(kOrder, Spectrum::Window::hann) {
  for (std::size_t band = 0; band < kPictureBands; ++band) {
    const double low = binOfEdge(band, spectrum.size());
    const double centre = binOfEdge(band + 1, spectrum.size());
    const double high = binOfEdge(band + 2, spectrum.size());
    Band& made = bands[band];
    made.first = static_cast<std::size_t>(std::ceil(low));
    for (auto bin = static_cast<double>(made.first); bin < high; ++bin) {
      made.weights.push_back(
          static_cast<float>(std::min((bin - low) / (centre - low), (high - bin) / (high - centre))));
    }
    if (made.weights.empty()) {  // The band is narrower than a bin.
      made.first = static_cast<std::size_t>(std::lround(centre));
      made.weights.push_back(1.0F);
    }
  }
}

Picture PictureMaker::pictureOf(const Hit& hit) {
  const std::size_t half = spectrum.size() / 2;
  const std::size_t last = static_cast<std::size_t>(kMilliseconds.back() * kMeasureRate / 1000.0) + half;
  padded.assign(half + last, 0.0F);
  std::copy_n(hit.begin(), std::min(hit.size(), last), padded.begin() + static_cast<std::ptrdiff_t>(half));

  Picture picture;
  auto place = picture.levels.begin();
  for (const int milliseconds : kMilliseconds) {
    const auto start = static_cast<std::size_t>(milliseconds * kMeasureRate / 1000.0);
    const auto power = spectrum.of(std::span(padded).subspan(start));
    for (const Band& band : bands) {
      *place++ = std::inner_product(band.weights.begin(), band.weights.end(),
                                    power.begin() + static_cast<std::ptrdiff_t>(band.first), 0.0F);
    }
  }
  const float total = std::accumulate(picture.levels.begin(), picture.levels.end(), 0.0F);
  if (total <= 0.0F) {
    picture.levels.fill(0.0F);
    return picture;
  }
  const float strongest = *std::ranges::max_element(picture.levels);
  picture.floor = decibelsOf(strongest / total) - kRangeDecibels;
  for (float& level : picture.levels) {
    level = level > 0.0F ? std::max(decibelsOf(level / total), picture.floor) : picture.floor;
  }
  return picture;
}

float distance(const Picture& a, const Picture& b) {
  float sum = 0.0F;
  float places = 0.0F;
  for (std::size_t i = 0; i < a.levels.size(); ++i) {
    const bool counts = a.levels[i] > a.floor || b.levels[i] > b.floor;
    sum += counts ? std::abs(a.levels[i] - b.levels[i]) : 0.0F;
    places += counts ? 1.0F : 0.0F;
  }
  return places > 0.0F ? sum / places : 0.0F;
}

}  // namespace sivray::content
