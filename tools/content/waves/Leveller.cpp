// Loudness with an ear's weighting, and the gain and soft clipping that reach a target.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/waves/Leveller.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr double kWindowSeconds = 0.08;
constexpr double kHighestPeak = -1.0;
constexpr double kLowestPeak = -15.0;
/// Recorded drums spend a hundredth of their first 100 ms near their peak; more bend than this makes it a twentieth.
constexpr double kMostBend = 3.0;
constexpr int kBendSteps = 12;
constexpr double kDecibelsPerOctave = 6.020599913279624;

double decibelsOf(double factor) { return kDecibelsPerOctave * logarithmOfTwo(std::max(factor, 1e-9)); }

void scale(Sound& sound, double factor) {
  for (Signal& channel : sound) {
    for (double& sample : channel) {
      sample *= factor;
    }
  }
}

/// Removes each channel's DC offset by subtracting a raised cosine over the whole length, which leaves both ends
/// unchanged.
void centre(Sound& sound) {
  Signal hump(sound.front().size());
  const double turn = 1.0 / static_cast<double>(hump.size() - 1);
  double area = 0.0;
  for (std::size_t i = 0; i < hump.size(); ++i) {
    hump[i] = 1.0 - cosineOfTurns(static_cast<double>(i) * turn);
    area += hump[i];
  }
  for (Signal& channel : sound) {
    const double height = std::accumulate(channel.begin(), channel.end(), 0.0) / area;
    for (std::size_t i = 0; i < channel.size(); ++i) {
      channel[i] -= height * hump[i];
    }
  }
}

/// Returns a sound of peak 1, amplified by `decibels` into the soft clipper and scaled back to peak 1.
Sound bent(const Sound& sound, double decibels) {
  const double gain = factorOfDecibels(decibels);
  Sound out = sound;
  for (Signal& channel : out) {
    for (double& sample : channel) {
      sample = softClip(sample * gain);
    }
  }
  scale(out, 1.0 / peakOf(out));
  return out;
}

}  // namespace

double loudnessOf(const Sound& sound) {
  const std::size_t frames = sound.front().size();
  std::vector<double> power(frames);
  for (const Signal& channel : sound) {
    Signal heard = channel;
    Biquad::runInTurn(heard, Biquad::highPass(60.0, 0.5), Biquad::highShelf(1700.0, 4.0));
    for (std::size_t i = 0; i < frames; ++i) {
      power[i] += heard[i] * heard[i] / static_cast<double>(sound.size());
    }
  }
  const std::size_t window = framesOf(kWindowSeconds);
  double sum = 0.0;
  double highest = 0.0;
  for (std::size_t i = 0; i < frames; ++i) {
    sum += power[i];
    if (i >= window) {
      sum -= power[i - window];
    }
    highest = std::max(highest, sum);
  }
  return decibelsOf(std::sqrt(highest / static_cast<double>(window)));
}

void level(Sound& sound, double target) {
  const double peak = peakOf(sound);
  if (peak == 0.0) {
    return;
  }
  scale(sound, 1.0 / peak);
  if (loudnessOf(sound) + kHighestPeak < target) {
    double low = 0.0;
    double high = kMostBend;
    for (int i = 0; i < kBendSteps; ++i) {
      const double middle = 0.5 * (low + high);
      (loudnessOf(bent(sound, middle)) + kHighestPeak < target ? low : high) = middle;
    }
    sound = bent(sound, high);
  }
  centre(sound);
  scale(sound, 1.0 / peakOf(sound));
  scale(sound, factorOfDecibels(std::clamp(target - loudnessOf(sound), kLowestPeak, kHighestPeak)));
}

}  // namespace sivray::content
