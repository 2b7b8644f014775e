// Noise through a moving filter: risers, whooshes, wind, bursts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kSweepNoiseLayer = 1;

/// Returns the filter output for `mode`: 0 low-pass, 1 band-pass, 2 high-pass; values in between crossfade.
double pick(const SweepFilter::Outputs& out, double mode) {
  return mode < 1.0 ? out.low + mode * (out.band - out.low) : out.band + (mode - 1.0) * (out.high - out.band);
}

void makeSweep(Signal& signal, const Parameters& p, Dice dice) {
  Noise noise(dice, kSweepNoiseLayer, p["width"]);
  Envelope fall({0.0, p.seconds("swell") + p.seconds("hold"), p.seconds("t60"), 0.0});
  const double swell = std::max(p.seconds("swell"), 1.0 / kSampleRate);
  const double swellDecibels = p["swelldb"];
  const double from = p["from"];
  const double octaves = logarithmOfTwo(p["to"] / from);
  const double seconds = p.seconds("ms");
  const double chopHertz = p["chophz"];
  const double chop = p["chop"];
  const double wander = p["wander"];
  const double wanderStart = dice.shared.unit() + 0.3 * p["width"] * dice.own.unit();
  const double q = p["q"];
  const double mode = p["mode"];
  Tuning tuning;
  SweepFilter first;
  SweepFilter second;
  double time = 0.0;
  for (double& sample : signal) {
    if (fall.isOver()) {
      return;
    }
    const double place = std::min(time / seconds, 1.0);
    const double drift =
        wander == 0.0
            ? 0.0
            : wander * (sineOfTurns(wanderStart + time * 0.71) + 0.6 * sineOfTurns(wanderStart + time * 1.83));
    const double g = tuning.to(from * powerOfTwo(octaves * place + drift));
    const double rise = std::min(time / swell, 1.0);
    const double swollen = rise < 1.0 ? rise * factorOfDecibels(-swellDecibels * (1.0 - rise)) : 1.0;
    const double level = swollen * fall.next();
    const double gate = chop == 0.0 ? 1.0 : 1.0 - chop * (0.5 + 0.5 * sineOfTurns(time * chopHertz + 0.25));
    const double once = pick(first.next(noise.next(), g, q), mode);
    sample += level * gate * pick(second.next(once, g, 0.7), mode);
    time += 1.0 / kSampleRate;
  }
}

}  // namespace

Model sweepModel() {
  return {"sweep",
          {{"from", {300}, 20, 18000},
           {"to", {8000}, 20, 18000},
           {"ms", {1000}, 1, 6000},
           {"mode", {1}, 0, 2},
           {"q", {1.5}, 0.5, 20},
           {"wander", {0}, 0, 3},
           {"swell", {1}, 0, 6000},
           {"swelldb", {0}, 0, 60},
           {"hold", {0}, 0, 6000},
           {"t60", {500}, 5, 8000},
           {"chop", {0}, 0, 1},
           {"chophz", {12}, 0.5, 200}},
          makeSweep};
}

}  // namespace sivray::content
