// Scratching: a second of recorded sound, played at a speed that follows a drawn curve.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kScratchRecordLayer = 1;
constexpr std::size_t kRecordFrames = 44100;

/// Formants of the recorded sound, in Hz.
constexpr std::array<double, 3> kPeaks{700.0, 1220.0, 2600.0};

Signal pressRecord(const Parameters& p, const Dice& dice) {
  Signal source(kRecordFrames);
  BandLimited saw(0.0);
  Noise noise(dice, kScratchRecordLayer, p["width"]);
  const double breath = p["breath"];
  for (double& sample : source) {
    sample = saw.saw(p["hz"]) * (1.0 - breath) + noise.next() * breath;
  }
  Signal record(kRecordFrames);
  mixInto(record, source, 0.3);
  for (const double hertz : kPeaks) {
    Signal peak = source;
    Biquad::bandPass(hertz, 4.0).run(peak);
    mixInto(record, peak, 1.0);
  }
  return record;
}

/// Returns the hand's speed at a position from 0 to 1 on the curve: straight lines between the points.
double speedAt(const std::vector<double>& points, double place) {
  const double position = std::clamp(place, 0.0, 1.0) * static_cast<double>(points.size() - 1);
  const auto index = std::min(static_cast<std::size_t>(position), points.size() - 2);
  const double share = position - static_cast<double>(index);
  return points[index] + share * (points[index + 1] - points[index]);
}

void makeScratch(Signal& signal, const Parameters& p, Dice dice) {
  const Signal record = pressRecord(p, dice);
  std::vector<double> points = p.list("speeds");
  points.push_back(0.0);
  const double seconds = p.seconds("ms");
  double position = static_cast<double>(kRecordFrames) / 2.0;
  double time = 0.0;
  Biquad tone = Biquad::lowPass(p["bright"]);
  for (double& sample : signal) {
    const double speed = speedAt(points, time / seconds);
    position += speed;
    position -= std::floor(position / kRecordFrames) * kRecordFrames;
    const auto at = std::min(static_cast<std::size_t>(position), kRecordFrames - 1);
    const double share = position - static_cast<double>(at);
    const double next = record[at + 1 == kRecordFrames ? 0 : at + 1];
    const double loudness = std::min(std::abs(speed), 1.5);
    sample += tone.next(loudness * (record[at] + share * (next - record[at])));
    time += 1.0 / kSampleRate;
  }
}

}  // namespace

Model scratchModel() {
  return {"scratch",
          {{"hz", {140}, 40, 800},
           {"breath", {0.4}, 0, 1},
           {"speeds", {0, 2.5, 0.3}, -8, 8},
           {"ms", {300}, 20, 4000},
           {"bright", {9000}, 500, 18000}},
          makeScratch};
}

}  // namespace sivray::content
