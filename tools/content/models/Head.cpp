// A struck skin over a shell: acoustic kicks, toms, congas and other hand drums, by tuning, hardness of the beater and
// place of the blow.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "content/models/Models.h"
#include "content/synth/Membrane.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kHeadClickLayer = 1;
constexpr std::uint64_t kHeadSkinLayer = 2;
constexpr std::uint64_t kHeadAirLayer = 3;

/// A resonance of a wooden shell, relative to the lowest one.
struct ShellMode {
  double ratio, gain;
};
constexpr std::array<ShellMode, 4> kShell{{{1.0, 1.0}, {1.87, 0.6}, {2.71, 0.4}, {4.13, 0.2}}};

void makeHead(Signal& signal, const Parameters& p, Dice dice) {
  const double width = p["width"];
  const Noise click(dice, kHeadClickLayer, width);
  const Noise skin(dice, kHeadSkinLayer, width);
  const Noise air(dice, kHeadAirLayer, width);
  const MembraneSettings membrane{.hertz = p["hz"],
                                  .t60 = p.seconds("t60"),
                                  .damp = p["damp"],
                                  .hard = p["hard"],
                                  .place = p["place"],
                                  .spread = p["spread"],
                                  .second = p["second"],
                                  .interval = p["interval"],
                                  .contact = p.seconds("contact")};
  const Glide glide{p["bend"], p.seconds("bendms"), 0.0, 0.004};
  addModes(signal, membraneModes(membrane, dice, width), glide);

  std::vector<Mode> shell;
  shell.reserve(kShell.size());
  for (const ShellMode& mode : kShell) {
    shell.push_back({.hertz = p["shellhz"] * mode.ratio,
                     .gain = p["shell"] * mode.gain,
                     .t60 = p.seconds("shellms") / mode.ratio,
                     .attack = 0.001});
  }
  addModes(signal, shell);
  addNoise(signal, skin,
           {p["skinlow"],
            p["skinhigh"],
            1,
            p["skin"] * 0.25,
            {p.seconds("contact") + 0.0006, 0.0, p.seconds("skinms"), 0.0}});
  addNoise(signal, air, {p["hz"] * 0.8, p["hz"] * 5.0, 1, p["air"] * 0.25, {0.003, 0.0, p.seconds("airms"), 0.0}});
  addClick(signal, click, {p["clickhz"], p.seconds("clickms"), p["click"], p["clicknoise"]});
}

}  // namespace

Model headModel() {
  return {"head",
          {{"hz", {100}, 25, 1500},         {"t60", {500}, 10, 6000},    {"damp", {1.2}, 0, 4},
           {"hard", {600}, 50, 8000},       {"place", {0.3}, 0, 1},      {"spread", {1}, 0.5, 1.3},
           {"second", {0}, 0, 1.5},         {"interval", {1.3}, 1, 4},   {"bend", {0.1}, -0.5, 3},
           {"bendms", {40}, 1, 1000},       {"shell", {0}, 0, 3},        {"shellhz", {220}, 60, 3000},
           {"shellms", {80}, 5, 2000},      {"skin", {0.3}, 0, 5},       {"skinlow", {300}, 30, 12000},
           {"skinhigh", {3000}, 60, 20000}, {"skinms", {40}, 1, 2000},   {"air", {0}, 0, 5},
           {"airms", {120}, 5, 2000},       {"click", {0.2}, 0, 3},      {"clickhz", {2500}, 200, 12000},
           {"clickms", {3}, 0.2, 30},       {"clicknoise", {0.4}, 0, 1}, {"contact", {0}, 0, 20}},
          makeHead};
}

}  // namespace sivray::content
