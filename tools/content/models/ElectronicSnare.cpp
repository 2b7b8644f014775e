// The electronic snare: two sines that fall a little, and shaped noise above them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/models/Models.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kElectronicSnareNoiseLayer = 1;
constexpr std::uint64_t kElectronicSnareSnapLayer = 2;
constexpr std::uint64_t kElectronicSnareClickLayer = 3;

void makeElectronicSnare(Signal& signal, const Parameters& p, Dice dice) {
  const double width = p["width"];
  const Glide glide{p["bend"], p.seconds("bendms"), p["snap"], 0.003};
  const Shape tone{p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0};
  const Shape upper{p.seconds("attack"), 0.0, p.seconds("t60") * 0.7, 0.0};
  addTone(signal, {.hertz = p["hz"], .gain = p["tone"], .fold = p["fold"], .glide = glide, .shape = tone});
  addTone(signal, {.hertz = p["hz"] * p["ratio"],
                   .gain = p["tone"] * p["upper"],
                   .fold = p["fold"],
                   .glide = glide,
                   .shape = upper});
  addNoise(signal, Noise(dice, kElectronicSnareNoiseLayer, width),
           {p["low"],
            p["high"],
            2,
            p["noise"] * 0.4,
            {p.seconds("noiseattack"), p.seconds("noisehold"), p.seconds("noisems"), 0.0}});
  addNoise(signal, Noise(dice, kElectronicSnareSnapLayer, width),
           {p["cracklow"], 16000, 1, p["crack"] * 0.35, {0.0003, 0.001, p.seconds("crackms"), 0.0}});
  addClick(signal, Noise(dice, kElectronicSnareClickLayer, width),
           {p["clickhz"], p.seconds("clickms"), p["click"], 0.2});
}

}  // namespace

Model esnareModel() {
  return {"esnare",
          {{"hz", {180}, 60, 1200},
           {"ratio", {1.83}, 1, 8},
           {"upper", {0.6}, 0, 2},
           {"tone", {0.7}, 0, 3},
           {"fold", {0}, 0, 1},
           {"bend", {0.4}, -0.9, 10},
           {"bendms", {15}, 1, 500},
           {"snap", {1}, 0, 20},
           {"attack", {0.2}, 0, 100},
           {"hold", {5}, 0, 500},
           {"t60", {180}, 5, 3000},
           {"noise", {1}, 0, 4},
           {"low", {1500}, 60, 12000},
           {"high", {14000}, 500, 20000},
           {"noiseattack", {0.5}, 0, 200},
           {"noisehold", {10}, 0, 1000},
           {"noisems", {250}, 5, 4000},
           {"crack", {0.5}, 0, 4},
           {"cracklow", {3000}, 200, 12000},
           {"crackms", {15}, 1, 200},
           {"click", {0.2}, 0, 3},
           {"clickhz", {3000}, 200, 12000},
           {"clickms", {1.5}, 0.2, 30}},
          makeElectronicSnare};
}

}  // namespace sivray::content
