// Electronic hats, cymbals and cowbells: a cluster of square waves with inharmonic pitches, filtered to two bands that
// decay separately.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kMetalNoiseLayer = 1;
constexpr double kTickSeconds = 0.012;

/// The filters run for this many frames before the sound starts, so that the squares' onset has died away.
constexpr std::size_t kSettleFrames = 2048;

/// Renders the cluster. `ring` mixes in the products of neighbouring squares, which fill the gaps between the partials.
Signal cluster(std::size_t frames, const Parameters& p, Dice& dice) {
  std::vector<BandLimited> oscillators;
  std::vector<double> hertz;
  for (const double ratio : p.list("ratios")) {
    const double sharedPhase = dice.shared.unit();
    oscillators.emplace_back(sharedPhase + p["width"] * dice.own.unit() * 0.5);
    hertz.push_back(p["hz"] * ratio * (1.0 + 0.004 * p["width"] * dice.own.both()));
  }
  const double ring = p["ring"];
  const double scale = 1.0 / static_cast<double>(oscillators.size());
  Signal signal(frames);
  for (double& sample : signal) {
    double sum = 0.0;
    double products = 0.0;
    double last = 1.0;
    for (std::size_t i = 0; i < oscillators.size(); ++i) {
      const double now = oscillators[i].square(hertz[i]);
      sum += now;
      products += now * last;
      last = now;
    }
    sample = (sum + ring * (products - sum)) * scale;
  }
  return signal;
}

void makeMetal(Signal& signal, const Parameters& p, Dice dice) {
  const Shape highShape{p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0};
  const Shape midShape{p.seconds("attack"), p.seconds("hold"), p.seconds("midms"), 0.0};
  const std::size_t frames =
      std::max(Envelope::framesOf(highShape, signal.size()), Envelope::framesOf(midShape, signal.size()));
  Signal source = cluster(kSettleFrames + frames, p, dice);
  const double noise = p["noise"];
  Noise hiss(dice, kMetalNoiseLayer, p["width"]);
  for (double& sample : source) {
    sample += noise * (hiss.next() * 0.5 - sample);
  }
  Signal high = source;
  for (int i = 0; i < 2; ++i) {
    Biquad::highPass(p["low"], 0.9).run(high);
    Biquad::bandPass(p["mid"], p["q"]).run(source);
  }
  Biquad::highPass(p["low"] * 0.5).run(source);
  Envelope highFall(highShape);
  Envelope midFall(midShape);
  Envelope tick({0.0, 0.0, kTickSeconds, 0.0});
  const double body = p["body"];
  const double tickGain = p["tick"];
  for (std::size_t i = 0; i < frames; ++i) {
    const double blow = 1.0 + tickGain * tick.next();
    signal[i] += blow * (highFall.next() * high[kSettleFrames + i] + body * midFall.next() * source[kSettleFrames + i]);
  }
}

}  // namespace

Model metalModel() {
  return {"metal",
          {{"hz", {320}, 80, 3000},
           {"ratios", {1, 1.31, 1.57, 1.86, 2.44, 2.69}, 0.5, 20},
           {"ring", {0}, 0, 1},
           {"noise", {0.1}, 0, 1},
           {"low", {6500}, 200, 16000},
           {"mid", {4500}, 200, 16000},
           {"q", {1}, 0.3, 10},
           {"body", {0.7}, 0, 4},
           {"attack", {0.2}, 0, 500},
           {"hold", {2}, 0, 1000},
           {"t60", {100}, 5, 8000},
           {"midms", {70}, 5, 8000},
           {"tick", {0.8}, 0, 8}},
          makeMetal};
}

}  // namespace sivray::content
