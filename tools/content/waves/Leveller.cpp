// Loudness with a frequency weighting, and the gain and soft clipping that reach a target.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/waves/Leveller.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

#include "content/synth/Filters.h"
#include "content/synth/Lanes.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr double kWindowSeconds = 0.08;
constexpr double kHighestPeak = -1.0;
constexpr double kLowestPeak = -15.0;
/// In dB. Recorded drums are near their peak for 1 % of their first 100 ms; more soft clipping than this makes it 5 %.
constexpr double kMostBend = 3.0;
constexpr int kBendSteps = 12;
constexpr double kDecibelsPerOctave = 6.020599913279624;

double decibelsOf(double factor) { return kDecibelsPerOctave * logarithmOfTwo(std::max(factor, 1e-9)); }

template <typename Change>
void changeAll(Sound& sound, Change change) {
  for (Signal& channel : sound) {
    std::ranges::transform(channel, channel.begin(), change);
  }
}

void scale(Sound& sound, double factor) {
  changeAll(sound, [factor](double sample) { return sample * factor; });
}

/// Removes each channel's DC offset by subtracting a raised cosine over the whole length, which leaves both ends
/// unchanged.
void centre(Sound& sound) {
  Signal hump(sound.front().size());
  const double turn = 1.0 / static_cast<double>(hump.size() - 1);
  int frame = 0;  // SSE2 has no vector conversion from a longer integer to double.
  for (double& height : hump) {
    height = 1.0 - cosineOfTurns(static_cast<double>(frame++) * turn);
  }
  const double area = std::accumulate(hump.begin(), hump.end(), 0.0);
  for (Signal& channel : sound) {
    const double height = std::accumulate(channel.begin(), channel.end(), 0.0) / area;
    for (std::size_t i = 0; i < channel.size(); ++i) {
      channel[i] -= height * hump[i];
    }
  }
}

/// Amplifies a sound of a known peak, soft-clips it, and scales the result to peak 1.
class Bend {
 public:
  Bend(double peak, double decibels) : gain(factorOfDecibels(decibels)), makeUp(1.0 / softClip(peak * gain)) {}

  double operator()(double sample) const { return softClip(sample * gain) * makeUp; }

 private:
  double gain, makeUp;
};

/// Returns the loudness of a sound whose samples are passed through `change`. Stops after the window in which the
/// loudness exceeds `enough`. A mono sound is as loud as two equal channels.
template <typename Change>
double loudnessOf(const Sound& sound, Change change, double enough) {
  const Biquad head = Biquad::highPass(60.0, 0.5);
  const Biquad canal = Biquad::highShelf(1700.0, 4.0);
  Biquad::State<TwoLanes> inHead;
  Biquad::State<TwoLanes> inCanal;
  const Signal& left = sound.front();
  const Signal& right = sound.back();
  // The moving sum takes the new frame's power and drops that of the frame one window earlier.
  const std::size_t window = framesOf(kWindowSeconds);
  Signal power(window);
  double sum = 0.0;
  double highest = 0.0;
  double loudness = decibelsOf(0.0);
  for (std::size_t start = 0; start < left.size() && loudness <= enough; start += window) {
    const std::size_t count = std::min(window, left.size() - start);
    for (std::size_t i = 0; i < count; ++i) {
      const TwoLanes both{change(left[start + i]), change(right[start + i])};
      const TwoLanes heard = canal.next(head.next(both, inHead), inCanal);
      const TwoLanes square = heard * heard;
      const double before = power[i];
      power[i] = square[0] * 0.5 + square[1] * 0.5;
      sum += power[i];
      sum -= before;
      highest = std::max(highest, sum);
    }
    loudness = decibelsOf(std::sqrt(highest / static_cast<double>(window)));
  }
  return loudness;
}

/// Returns the least soft clipping that gives a sound of peak 1 the wanted loudness; the most if none does.
Bend bendTo(const Sound& sound, double wanted) {
  const double peak = peakOf(sound);
  const auto isQuiet = [&](double bend) { return loudnessOf(sound, Bend(peak, bend), wanted) < wanted; };
  double low = 0.0;
  double high = kMostBend;
  const int steps = isQuiet(high) ? 0 : kBendSteps;
  for (int i = 0; i < steps; ++i) {
    const double middle = 0.5 * (low + high);
    (isQuiet(middle) ? low : high) = middle;
  }
  return {peak, high};
}

}  // namespace

double loudnessOf(const Sound& sound) {
  return loudnessOf(sound, std::identity(), std::numeric_limits<double>::infinity());
}

void level(Sound& sound, double target) {
  const double peak = peakOf(sound);
  if (peak == 0.0) {
    return;
  }
  scale(sound, 1.0 / peak);
  const double wanted = target - kHighestPeak;
  if (loudnessOf(sound, std::identity(), wanted) < wanted) {
    changeAll(sound, bendTo(sound, wanted));
  }
  centre(sound);
  scale(sound, 1.0 / peakOf(sound));
  scale(sound, factorOfDecibels(std::clamp(target - loudnessOf(sound), kLowestPeak, kHighestPeak)));
}

}  // namespace sivray::content
