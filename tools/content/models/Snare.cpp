// The snare drum: a struck skin, and wires under the other skin that rattle while it moves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Membrane.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kSnareWireLayer = 1;
constexpr std::uint64_t kSnareCrackLayer = 2;
constexpr std::uint64_t kSnareClickLayer = 3;
constexpr std::uint64_t kSnareTailLayer = 4;

/// Seconds that the pressure of the stroke takes through the air in the shell to the wires.
constexpr double kWireDelay = 0.0008;

/// The number of resonant peaks in the wires' band, spaced on a logarithmic scale.
constexpr int kWirePeaks = 4;

/// Shapes the wires' noise by the skin's movement. At `buzz` 0 the noise keeps its own envelope.
Signal rattle(Signal wires, const Signal& skin, double buzz) {
  double level = 0.0;
  double highest = 1e-9;
  for (std::size_t i = 0; i < wires.size(); ++i) {
    level = std::max(std::abs(skin[i]), level * 0.997);
    highest = std::max(highest, level);
    const double swing = 0.5 * std::abs(skin[i]) + 0.5 * level;
    wires[i] *= 1.0 - buzz + buzz * std::min(1.4 * swing / highest, 1.0);
  }
  return wires;
}

void makeSnare(Signal& signal, const Parameters& p, Dice dice) {
  const double width = p["width"];
  const Noise wireNoise(dice, kSnareWireLayer, width);
  const Noise crackNoise(dice, kSnareCrackLayer, width);
  const Noise clickNoise(dice, kSnareClickLayer, width);
  const Noise tailNoise(dice, kSnareTailLayer, width);

  Signal skin(signal.size());
  const MembraneSettings membrane{.hertz = p["hz"],
                                  .t60 = p.seconds("t60"),
                                  .damp = p["damp"],
                                  .hard = p["hard"],
                                  .place = p["place"],
                                  .second = p["second"],
                                  .interval = p["interval"],
                                  .contact = p.seconds("contact")};
  addModes(skin, membraneModes(membrane, dice, width * 0.5), {p["bend"], p.seconds("bendms"), 0.0, 0.004});
  const double ring = p["ring"];
  const std::vector<Mode> rings{{.hertz = p["ringhz"], .gain = ring, .t60 = p.seconds("ringms")},
                                {.hertz = p["ringhz"] * 1.52, .gain = ring * 0.6, .t60 = p.seconds("ringms") * 0.8},
                                {.hertz = p["ringhz"] * 2.31, .gain = ring * 0.4, .t60 = p.seconds("ringms") * 0.6}};

  Signal wires(signal.size());
  const Shape shape{p.seconds("wireattack"), p.seconds("wirehold"), p.seconds("wirems"), kWireDelay};
  addNoise(wires, wireNoise, {p["wirelow"], p["wirehigh"], 1, 0.3, shape});
  Signal coloured = wires;
  for (int i = 0; i < kWirePeaks; ++i) {
    const double place = (static_cast<double>(i) + dice.shared.between(0.2, 0.8)) / kWirePeaks;
    Signal peak = wires;
    Biquad::bandPass(p["wirelow"] * (1.0 + place * (p["wirehigh"] / p["wirelow"] - 1.0)), 3.0).run(peak);
    mixInto(coloured, peak, 1.1);
  }
  Signal tail(signal.size());
  addNoise(tail, tailNoise,
           {p["wirelow"] * 1.5, p["wirehigh"], 2, 0.1 * p["loose"], {0.004, 0.0, p.seconds("loosems"), kWireDelay}});
  mixInto(coloured, tail, 1.0);

  mixInto(signal, skin, p["tone"]);
  addModes(signal, rings);
  mixInto(signal, rattle(std::move(coloured), skin, p["buzz"]), p["wires"]);
  addNoise(signal, crackNoise, {p["cracklow"], p["crackhigh"], 1, p["crack"] * 0.3, {0.0004, 0.0015, 0.02, 0.0}});
  addClick(signal, clickNoise, {p["clickhz"], p.seconds("clickms"), p["click"], p["clicknoise"]});
}

}  // namespace

Model snareModel() {
  return {"snare",
          {{"hz", {185}, 80, 600},
           {"t60", {220}, 10, 2000},
           {"damp", {0.8}, 0, 4},
           {"hard", {700}, 50, 8000},
           {"place", {0.35}, 0, 1},
           {"second", {0.5}, 0, 1.5},
           {"interval", {1.7}, 1, 4},
           {"contact", {0}, 0, 20},
           {"bend", {0.12}, -0.5, 3},
           {"bendms", {25}, 1, 500},
           {"tone", {0.8}, 0, 3},
           {"ring", {0}, 0, 2},
           {"ringhz", {620}, 200, 4000},
           {"ringms", {250}, 5, 3000},
           {"wires", {1}, 0, 4},
           {"wirelow", {1200}, 100, 9000},
           {"wirehigh", {11000}, 1000, 20000},
           {"wirems", {260}, 5, 3000},
           {"wireattack", {0.8}, 0, 500},
           {"wirehold", {8}, 0, 1000},
           {"buzz", {0.5}, 0, 1},
           {"loose", {0.3}, 0, 4},
           {"loosems", {450}, 5, 4000},
           {"crack", {0.6}, 0, 4},
           {"cracklow", {900}, 100, 12000},
           {"crackhigh", {6000}, 500, 20000},
           {"click", {0.3}, 0, 3},
           {"clickhz", {3500}, 200, 12000},
           {"clickms", {1.5}, 0.2, 30},
           {"clicknoise", {0.5}, 0, 1}},
          makeSnare};
}

}  // namespace sivray::content
