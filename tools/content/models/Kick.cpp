// The electronic kick: a sine that falls from far above its pitch, with a click and some noise. Tuned higher it is an
// electronic tom; without the fall, a bass.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/models/Models.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kKickClickLayer = 1;
constexpr std::uint64_t kKickNoiseLayer = 2;

void makeKick(Signal& signal, const Parameters& p, Dice dice) {
  const Glide glide{p["bend"], p.seconds("bendms"), p["snap"], p.seconds("snapms")};
  const Shape shape{p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0};
  addTone(signal, {.hertz = p["hz"], .fold = p["fold"], .glide = glide, .shape = shape});
  const Shape upper{p.seconds("attack"), 0.0, p.seconds("upperms"), 0.0};
  addTone(signal, {.hertz = p["hz"] * p["ratio"], .gain = p["upper"], .glide = glide, .shape = upper});
  addClick(signal, Noise(dice, kKickClickLayer, p["width"]),
           {p["clickhz"], p.seconds("clickms"), p["click"], p["clicknoise"]});
  addNoise(signal, Noise(dice, kKickNoiseLayer, p["width"]),
           {p["noiselow"], p["noisehigh"], 1, p["noise"] * 0.2, {0.0, 0.0, p.seconds("noisems"), 0.0}});
}

}  // namespace

Model kickModel() {
  return {"kick",
          {{"hz", {50}, 20, 2000},
           {"bend", {2}, -1, 30},
           {"bendms", {30}, 1, 1000},
           {"snap", {5}, -1, 60},
           {"snapms", {4}, 0.5, 50},
           {"attack", {0.3}, 0, 200},
           {"hold", {10}, 0, 2000},
           {"t60", {500}, 5, 6000},
           {"fold", {0}, 0, 1},
           {"upper", {0}, 0, 2},
           {"ratio", {2}, 0.25, 12},
           {"upperms", {200}, 5, 6000},
           {"click", {0.3}, 0, 3},
           {"clickhz", {3000}, 200, 12000},
           {"clickms", {2}, 0.2, 30},
           {"clicknoise", {0.3}, 0, 1},
           {"noise", {0.1}, 0, 5},
           {"noiselow", {1500}, 20, 16000},
           {"noisehigh", {8000}, 50, 20000},
           {"noisems", {40}, 1, 3000}},
          makeKick};
}

}  // namespace sivray::content
