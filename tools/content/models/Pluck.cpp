// Plucked and slapped strings: a delay line with a low-pass in its loop, and the resonances of a body.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kPluckPickLayer = 10;
constexpr std::uint64_t kPluckSlapLayer = 1;

/// The body's resonances relative to its lowest.
constexpr std::array<double, 3> kBodyRatios{1.0, 1.93, 3.07};

/// Returns the string's shape at its release: random, with harmonics that fall off as those of a plucked string, plus
/// some unfiltered `edge`, and without the harmonics that have a node where the pick is.
Signal pickShape(Noise noise, std::size_t period, const Parameters& p) {
  Signal raw(period);
  double mean = 0.0;
  for (double& sample : raw) {
    sample = noise.next();
    mean += sample / static_cast<double>(period);
  }
  Signal shape(period);
  double sum = 0.0;
  for (std::size_t i = 0; i < period; ++i) {
    sum += raw[i] - mean;
    shape[i] = sum;
  }
  normalise(shape, 1.0);
  mixInto(shape, raw, p["edge"] * 0.3);
  Signal picked = shape;
  const double place = static_cast<double>(period) * p["pick"];
  const auto node = std::max<std::size_t>(1, static_cast<std::size_t>(place));
  for (std::size_t i = 0; i < period; ++i) {
    picked[i] -= shape[(i + period - node) % period];
  }
  Biquad::lowPass(p["bright"]).run(picked);
  normalise(picked, 1.0);
  return picked;
}

void addString(Signal& signal, const Parameters& p, Noise noise, double hertz, std::size_t start) {
  const double damp = p["damp"];
  const double loopSeconds = 1.0 / hertz;
  const double period = kSampleRate / hertz - damp;
  const auto whole = static_cast<std::size_t>(period);
  const double rest = period - static_cast<double>(whole);
  const double loss = factorOfDecibels(-60.0 * loopSeconds / p.seconds("t60"));
  Signal line = pickShape(noise, whole + 1, p);
  std::size_t at = 0;
  double dark = 0.0;
  for (std::size_t i = start; i < signal.size(); ++i) {
    const std::size_t older = at;
    const std::size_t newer = at + 1 == line.size() ? 0 : at + 1;
    const double out = line[older] * rest + line[newer] * (1.0 - rest);
    dark += (1.0 - damp) * (out - dark);
    signal[i] += out;
    line[older] = dark * loss;
    at = newer;
  }
}

void makePluck(Signal& signal, const Parameters& p, Dice dice) {
  std::uint64_t layer = kPluckPickLayer;
  double start = 0.0;
  const double strum = p.seconds("strum");
  for (const double note : p.list("notes")) {
    const double drift = 0.05 * p["width"] * dice.own.both();
    addString(signal, p, Noise(dice, layer++, p["width"]), p["hz"] * ratioOfSemitones(note + drift), framesOf(start));
    start += strum;
  }
  Signal dry = signal;
  for (const double ratio : kBodyRatios) {
    Signal body = dry;
    Biquad::bandPass(p["bodyhz"] * ratio, 4.0).run(body);
    mixInto(signal, body, p["body"] / ratio);
  }
  addNoise(signal, Noise(dice, kPluckSlapLayer, p["width"]),
           {p["slaplow"], 9000, 1, p["slap"] * 0.3, {0.0004, 0.0, p.seconds("slapms"), 0.0}});
}

}  // namespace

Model pluckModel() {
  return {"pluck",
          {{"hz", {130.81}, 25, 2000},
           {"notes", {0, 12}, -36, 48},
           {"strum", {0}, 0, 200},
           {"damp", {0.4}, 0, 0.98},
           {"t60", {1500}, 10, 12000},
           {"pick", {0.15}, 0.02, 0.5},
           {"edge", {0.15}, 0, 1},
           {"bright", {6000}, 200, 20000},
           {"body", {0.5}, 0, 4},
           {"bodyhz", {180}, 50, 2000},
           {"slap", {0}, 0, 4},
           {"slaplow", {1200}, 50, 8000},
           {"slapms", {25}, 1, 500}},
          makePluck};
}

}  // namespace sivray::content
