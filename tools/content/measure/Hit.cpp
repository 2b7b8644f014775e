// Averages channels, converts rates, and finds where a hit begins.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Hit.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "content/RateConverter.h"

namespace sivray::content {
namespace {

std::vector<float> monoOf(const Wave& wave) {
  constexpr float kFullScale = 32768.0F;
  std::vector<float> mono(wave.left.size());
  for (std::size_t i = 0; i < mono.size(); ++i) {
    const float left = wave.left[i];
    mono[i] = (wave.right.empty() ? left : 0.5F * (left + static_cast<float>(wave.right[i]))) / kFullScale;
  }
  return mono;
}

}  // namespace

Hit hitFrom(std::span<const float> mono) {
  constexpr float kOnset = 0.01F;  // 40 dB below the peak.
  float peak = 0.0F;
  for (const float sample : mono) {
    peak = std::max(peak, std::abs(sample));
  }
  if (peak <= 0.0F) {
    return {};
  }
  const auto first = std::ranges::find_if(mono, [=](float x) { return std::abs(x) >= kOnset * peak; });
  return {first, mono.end()};
}

std::optional<double> monoLossOf(const Wave& wave) {
  if (wave.right.empty() || wave.left == wave.right) {
    return std::nullopt;
  }
  double sides = 0.0;
  double middle = 0.0;
  for (std::size_t i = 0; i < wave.left.size(); ++i) {
    const double left = wave.left[i];
    const double right = wave.right[i];
    sides += 0.5 * (left * left + right * right);
    middle += 0.25 * (left + right) * (left + right);
  }
  return 10.0 * std::log10((sides + 1e-9) / (middle + 1e-9));
}

Hit hitOf(const Wave& wave) {
  const std::vector<float> mono = monoOf(wave);
  return hitFrom(wave.sampleRate == static_cast<int>(kMeasureRate)
                     ? mono
                     : atRate(mono, kMeasureRate / wave.sampleRate, RateQuality::fast));
}

}  // namespace sivray::content
