// Big impacts: a low tone that falls, a burst of noise that darkens, and rubble.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kImpactBurstLayer = 1;
constexpr std::uint64_t kImpactRubbleLayer = 2;
constexpr std::uint64_t kImpactCrackLayer = 3;

/// Adds the rubble: knocks at random times, with growing intervals.
void addRubble(Signal& signal, Noise noise, Random random, const Parameters& p) {
  Envelope fall({0.0, p.seconds("hold"), p.seconds("rubblems"), 0.0});
  const double chance = p["rubblerate"] / kSampleRate;
  const double grainFall = decayPerFrame(0.05);
  const double gain = p["rubble"];
  Biquad low = Biquad::lowPass(p["to"] * 4.0);
  double level = 0.0;
  for (double& sample : signal) {
    const double energy = fall.next();
    if (random.unit() < chance) {
      level = std::max(level, energy * random.between(0.2, 1.0));
    }
    sample += gain * low.next(level * noise.next());
    level = level < 1e-9 ? 0.0 : level * grainFall;
  }
}

void makeImpact(Signal& signal, const Parameters& p, Dice dice) {
  const double width = p["width"];
  addTone(signal, {.hertz = p["hz"],
                   .gain = p["tone"],
                   .fold = p["fold"],
                   .glide = {p["bend"], p.seconds("bendms"), 0.0, 0.004},
                   .shape = {p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0}});
  Noise noise(dice, kImpactBurstLayer, width);
  Envelope burst({p.seconds("attack"), p.seconds("hold"), p.seconds("burstms"), 0.0});
  const double octaves = logarithmOfTwo(p["to"] / p["from"]);
  const double seconds = p.seconds("darkms");
  const double gain = p["burst"];
  const double from = p["from"];
  Tuning tuning;
  SweepFilter first;
  SweepFilter second;
  double time = 0.0;
  for (double& sample : signal) {
    if (burst.isOver()) {
      break;
    }
    const double g = tuning.to(from * powerOfTwo(octaves * std::min(time / seconds, 1.0)));
    const double once = first.next(noise.next(), g, 0.7).low;
    sample += gain * burst.next() * second.next(once, g, 0.7).low;
    time += 1.0 / kSampleRate;
  }
  addRubble(signal, Noise(dice, kImpactRubbleLayer, width), width > 0.0 ? dice.own : dice.shared, p);
  addNoise(signal, Noise(dice, kImpactCrackLayer, width),
           {1500, 14000, 1, p["crack"] * 0.3, {0.0005, 0.002, 0.03, 0.0}});
}

}  // namespace

Model impactModel() {
  return {"impact",
          {{"hz", {45}, 20, 400},
           {"tone", {1}, 0, 3},
           {"fold", {0.1}, 0, 1},
           {"bend", {1}, -0.5, 20},
           {"bendms", {120}, 1, 4000},
           {"attack", {0.5}, 0, 1000},
           {"hold", {20}, 0, 3000},
           {"t60", {1500}, 5, 8000},
           {"burst", {1}, 0, 4},
           {"burstms", {1000}, 5, 8000},
           {"from", {9000}, 50, 18000},
           {"to", {200}, 40, 12000},
           {"darkms", {600}, 1, 6000},
           {"rubble", {0}, 0, 6},
           {"rubblerate", {40}, 0.5, 2000},
           {"rubblems", {1500}, 5, 8000},
           {"crack", {0.5}, 0, 4}},
          makeImpact};
}

}  // namespace sivray::content
