// A windowed sinc between the samples, from a table.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/RateConverter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "host/resample/CFirLpfCoeffs.h"

namespace sivray::content {
namespace {

/// The right half of the filter, for a sample distance of 1.
class Filter {
 public:
  /// `newReach` is the filter's reach in samples. The stop band is `depth` dB deep and begins at half the rate.
  Filter(int newReach, double depth) : reach(newReach) {
    constexpr int kUnitRate = 100000;  // Hz; the design takes whole numbers.
    constexpr int kSeriesTerms = 40;
    // Kaiser's formula for the width of the transition, relative to half the rate.
    const double transition = (depth - 8.0) / (2.285 * 2.0 * reach * std::numbers::pi);
    tesh::bramel::vst::CFirLpfCoeffs design;
    design.setSeriesTerms(kSeriesTerms);
    design.setAttenuation(depth);
    design.setLength(2 * reach * kSteps + 1);
    design.setSampleRate(kSteps * kUnitRate);
    design.setCutoff(static_cast<std::int32_t>((1.0 - transition / 2.0) * kUnitRate / 2.0));
    for (int step = 0; step <= reach * kSteps; ++step) {
      table.push_back(design.value(reach * kSteps + step) * kSteps);
    }
    table.push_back(0.0);
  }

  int reachInSamples() const { return reach; }

  /// Linear interpolation between the table's entries. `distance` is 0 to the filter's reach.
  double at(double distance) const {
    const double place = distance * kSteps;
    const auto step = static_cast<std::size_t>(place);
    const double part = place - static_cast<double>(step);
    return table[step] + part * (table[step + 1] - table[step]);
  }

 private:
  static constexpr int kSteps = 1024;

  int reach;
  std::vector<double> table;
};

const Filter& filterOf(RateQuality quality) {
  static const Filter kBest(64, 110.0);
  static const Filter kFast(16, 70.0);
  return quality == RateQuality::best ? kBest : kFast;
}

}  // namespace

std::vector<float> atRate(std::span<const float> channel, double ratio, RateQuality quality) {
  const Filter& filter = filterOf(quality);
  // For a lower rate the filter is wider in proportion.
  const double scale = std::min(ratio, 1.0);
  const double reach = filter.reachInSamples() / scale;
  const auto last = static_cast<std::int64_t>(channel.size()) - 1;
  std::vector<float> result(
      std::max<std::size_t>(static_cast<std::size_t>(std::llround(static_cast<double>(channel.size()) * ratio)), 1));
  for (std::size_t i = 0; i < result.size(); ++i) {
    const double centre = static_cast<double>(i) / ratio;
    const auto from = std::max<std::int64_t>(static_cast<std::int64_t>(std::ceil(centre - reach)), 0);
    const auto to = std::min(static_cast<std::int64_t>(std::floor(centre + reach)), last);
    double sum = 0.0;
    for (std::int64_t sample = from; sample <= to; ++sample) {
      const double distance = std::abs(static_cast<double>(sample) - centre) * scale;
      sum += static_cast<double>(channel[static_cast<std::size_t>(sample)]) * filter.at(distance);
    }
    result[i] = static_cast<float>(sum * scale);
  }
  return result;
}

}  // namespace sivray::content
