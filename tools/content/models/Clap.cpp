// Claps: several hands, each a short burst of noise in its own band, slightly apart in time, and their echoes from the
// walls.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kClapTailLayer = 1;
constexpr std::uint64_t kClapHandLayer = 10;

/// A burst is rendered for this many times its t60, until it is about 108 dB down.
constexpr double kHeardFalls = 1.8;

/// Adds one burst: noise through the resonance of the hollow hand, with part of the unfiltered bright slap.
void addHand(Signal& signal, Noise noise, double hertz, double at, double gain, const Parameters& p) {
  const std::size_t start = framesOf(at);
  if (start >= signal.size()) {
    return;
  }
  Signal burst(std::min(framesOf(p.seconds("burst") * kHeardFalls), signal.size() - start));
  addNoise(burst, noise, {300, 12000, 1, 1.0, {0.0004, 0.0, p.seconds("burst"), 0.0}});
  Signal hollow = burst;
  Biquad::bandPass(hertz, p["q"]).run(hollow);
  Signal hand(burst.size());
  mixInto(hand, hollow, gain * (0.6 + 0.4 * p["q"]));
  Biquad::highPass(p["airhz"]).run(burst);
  mixInto(hand, burst, gain * p["air"]);
  for (std::size_t i = 0; i < hand.size(); ++i) {
    signal[start + i] += hand[i];
  }
}

void makeClap(Signal& signal, const Parameters& p, Dice dice) {
  const double width = p["width"];
  const std::vector<double>& bursts = p.list("bursts");
  const auto hands = static_cast<int>(p["hands"]);
  std::uint64_t layer = kClapHandLayer;
  const double tune = p["tune"];
  for (const double burst : bursts) {
    for (int hand = 0; hand < hands; ++hand) {
      const Noise noise(dice, layer++, width);
      const bool isFirst = layer == kClapHandLayer + 1;
      const double late = isFirst ? 0.0 : p["spread"] * (dice.shared.unit() + width * dice.own.unit() * 0.5);
      const double hertz = p["hz"] * ratioOfSemitones(tune * dice.shared.both());
      const double gain = (isFirst ? 1.0 : dice.shared.between(0.6, 1.0)) * (1.0 + 0.4 * width * dice.own.both());
      addHand(signal, noise, hertz, (burst + late) * 0.001, gain, p);
    }
  }
  Signal tail(signal.size());
  addNoise(
      tail, Noise(dice, kClapTailLayer, width),
      {p["hz"] * 0.6, p["tailhigh"], 1, p["tail"] * 0.35, {0.001, 0.0, p.seconds("tailms"), bursts.back() * 0.001}});
  Signal hollow = tail;
  Biquad::bandPass(p["hz"], p["q"] * 0.7).run(hollow);
  mixInto(signal, tail, 0.5);
  mixInto(signal, hollow, 0.8);
  addTone(signal, {.hertz = p["bodyhz"],
                   .gain = p["body"],
                   .glide = {0.5, 0.01, 0.0, 0.004},
                   .shape = {0.0005, 0.002, p.seconds("bodyms"), 0.0}});
}

}  // namespace

Model clapModel() {
  return {"clap",
          {{"bursts", {0, 10, 20, 30}, 0, 500},
           {"burst", {14}, 1, 200},
           {"hands", {1}, 1, 24},
           {"spread", {0}, 0, 80},
           {"tune", {0}, 0, 12},
           {"hz", {1100}, 200, 6000},
           {"q", {1.5}, 0.3, 20},
           {"air", {0.25}, 0, 3},
           {"airhz", {4000}, 500, 12000},
           {"tail", {1}, 0, 4},
           {"tailms", {180}, 5, 3000},
           {"tailhigh", {7000}, 500, 18000},
           {"body", {0}, 0, 3},
           {"bodyhz", {180}, 40, 1000},
           {"bodyms", {100}, 5, 1000}},
          makeClap};
}

}  // namespace sivray::content
