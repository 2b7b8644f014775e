// Bars, bells, blocks and everything else that rings in a few clear partials.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/models/Models.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kModalClickLayer = 1;
constexpr std::uint64_t kModalNoiseLayer = 2;

/// Returns a partial's gain. Partials past the end of the list take its last entry.
double gainOf(const std::vector<double>& gains, std::size_t partial) {
  return gains[partial < gains.size() ? partial : gains.size() - 1];
}

std::vector<Mode> partials(const Parameters& p, Dice& dice) {
  std::vector<Mode> modes;
  const std::vector<double>& ratios = p.list("ratios");
  const double beat = ratioOfSemitones(p["beat"] * 0.01);
  for (std::size_t i = 0; i < ratios.size(); ++i) {
    const double gain = gainOf(p.list("gains"), i) * (1.0 + 0.5 * p["width"] * dice.own.both());
    const Mode mode{.hertz = p["hz"] * ratios[i],
                    .gain = gain,
                    .t60 = p.seconds("t60") * power(ratios[i], -p["damp"]),
                    .attack = p.seconds("attack")};
    modes.push_back(mode);
    if (p["beat"] > 0.0) {
      modes.push_back(mode);
      modes.back().hertz *= beat;
      modes.back().gain *= 0.7;
    }
  }
  return modes;
}

void makeModal(Signal& signal, const Parameters& p, Dice dice) {
  const Noise click(dice, kModalClickLayer, p["width"]);
  const Noise noise(dice, kModalNoiseLayer, p["width"]);
  const std::vector<Mode> modes = partials(p, dice);
  if (p["bend"] != 0.0) {
    addModes(signal, modes, {p["bend"], p.seconds("bendms"), 0.0, 0.004});
  } else {
    addModes(signal, modes);
  }
  if (p["tremolo"] > 0.0) {
    const double step = p["tremolohz"] / kSampleRate;
    const double depth = p["tremolo"];
    double phase = 0.25;
    for (double& sample : signal) {
      sample *= 1.0 - depth * (0.5 - 0.5 * sineOfTurns(phase));
      phase += step;
    }
  }
  addNoise(signal, noise,
           {p["noiselow"], p["noisehigh"], 1, p["noise"] * 0.25, {0.0004, 0.0, p.seconds("noisems"), 0.0}});
  addClick(signal, click, {p["clickhz"], p.seconds("clickms"), p["click"], p["clicknoise"]});
}

}  // namespace

Model modalModel() {
  return {"modal",
          {{"hz", {800}, 40, 12000},
           {"ratios", {1, 2.76, 5.4}, 0.1, 40},
           {"gains", {1, 0.5, 0.25}, -4, 4},
           {"t60", {300}, 3, 8000},
           {"damp", {0.7}, -1, 4},
           {"attack", {0}, 0, 200},
           {"beat", {0}, 0, 100},
           {"bend", {0}, -0.5, 3},
           {"bendms", {10}, 1, 500},
           {"tremolo", {0}, 0, 1},
           {"tremolohz", {5}, 0.5, 40},
           {"noise", {0}, 0, 5},
           {"noiselow", {1000}, 50, 14000},
           {"noisehigh", {9000}, 100, 20000},
           {"noisems", {20}, 1, 2000},
           {"click", {0.2}, 0, 4},
           {"clickhz", {3000}, 200, 12000},
           {"clickms", {1.5}, 0.2, 30},
           {"clicknoise", {0.3}, 0, 1}},
          makeModal};
}

}  // namespace sivray::content
