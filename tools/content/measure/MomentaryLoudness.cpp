// Loudness of 400 ms by ITU-R BS.1770: the mean square after two filters that imitate the ear. Implemented here because
// Debian has no libebur128 for the Windows compiler, and own sounds are compared on Windows, too.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "content/measure/Loudness.h"
#include "core/EngineRate.h"

namespace sivray::content {
namespace {

constexpr double kRate = tesh::cofu::core::kEngineRate;
constexpr std::size_t kMoment = static_cast<std::size_t>(0.4 * kRate);
constexpr std::size_t kStep = static_cast<std::size_t>(0.1 * kRate);
constexpr double kSilence = -100.0;

/// A filter with two poles and two zeros.
struct Weighting {
  double b0, b1, b2, a1, a2;

  void apply(std::vector<double>& sound) const {
    double first = 0.0;
    double second = 0.0;
    for (double& sample : sound) {
      const double result = b0 * sample + first;
      first = b1 * sample - a1 * result + second;
      second = b2 * sample - a2 * result;
      sample = result;
    }
  }
};

/// The effect of the head: 4 dB more above 1.7 kHz. The recommendation gives coefficients for 48 kHz; this is the
/// analogue filter from which they follow.
Weighting shelf() {
  constexpr double kHertz = 1681.974450955533;
  constexpr double kDecibels = 3.999843853973347;
  constexpr double kQuality = 0.7071752369554196;
  const double k = std::tan(std::numbers::pi * kHertz / kRate);
  const double high = std::pow(10.0, kDecibels / 20.0);
  const double middle = std::pow(high, 0.4996667741545416);
  const double scale = 1.0 / (1.0 + k / kQuality + k * k);
  return {(high + middle * k / kQuality + k * k) * scale, 2.0 * (k * k - high) * scale,
          (high - middle * k / kQuality + k * k) * scale, 2.0 * (k * k - 1.0) * scale,
          (1.0 - k / kQuality + k * k) * scale};
}

/// Attenuates frequencies below 40 Hz.
Weighting lowCut() {
  constexpr double kHertz = 38.13547087602444;
  constexpr double kQuality = 0.5003270373238773;
  const double k = std::tan(std::numbers::pi * kHertz / kRate);
  const double scale = 1.0 / (1.0 + k / kQuality + k * k);
  return {1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) * scale, (1.0 - k / kQuality + k * k) * scale};
}

void addSquares(const std::vector<float>& side, std::vector<double>& sums) {
  std::vector<double> sound(side.begin(), side.end());
  shelf().apply(sound);
  lowCut().apply(sound);
  double sum = 0.0;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    sum += sound[i] * sound[i];
    sums[i + 1] += sum;
  }
}

}  // namespace

double momentaryLoudness(const StereoSound& sound) {
  constexpr double kOffset = -0.691;  // The constant of BS.1770: with it a sine of 997 Hz reads its level.
  std::vector<double> sums(sound.left.size() + 1);
  addSquares(sound.left, sums);
  addSquares(sound.right, sums);
  double loudest = 0.0;
  for (std::size_t start = 0; start < sound.left.size(); start += kStep) {
    const std::size_t end = std::min(start + kStep, sound.left.size());
    loudest = std::max(loudest, sums[end] - sums[end > kMoment ? end - kMoment : 0]);
  }
  const double mean = loudest / static_cast<double>(kMoment);
  return mean > 0.0 ? std::max(10.0 * std::log10(mean) + kOffset, kSilence) : kSilence;
}

}  // namespace sivray::content
