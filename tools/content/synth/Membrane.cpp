// The modes of an ideal round membrane, changed towards those of a real drum.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Membrane.h"

#include <algorithm>
#include <array>

#include "content/synth/Math.h"

namespace sivray::content {
namespace {

/// A mode of a round membrane: its frequency relative to the lowest, from the zeros of the Bessel functions, and its
/// number of nodal diameters. Modes without a diameter respond most in the centre, the others near the rim.
struct Ring {
  double ratio;
  int diameters;
};
constexpr std::array<Ring, 16> kRings{{{1.0, 0},
                                       {1.593, 1},
                                       {2.136, 2},
                                       {2.295, 0},
                                       {2.653, 3},
                                       {2.917, 1},
                                       {3.155, 4},
                                       {3.500, 2},
                                       {3.598, 0},
                                       {3.652, 5},
                                       {4.059, 3},
                                       {4.152, 6},
                                       {4.230, 1},
                                       {4.601, 4},
                                       {4.832, 2},
                                       {4.903, 0}}};

/// Random detuning of the modes, since no skin is tuned evenly all around.
constexpr double kUneven = 0.012;

/// Seconds until the air has carried the stroke to the second skin.
constexpr double kCrossing = 0.004;

double strikeGain(const Ring& ring, double place) {
  double gain = ring.diameters == 0 ? 1.0 - 0.6 * place : 1.2;
  for (int i = 0; i < ring.diameters; ++i) {
    gain *= 0.25 + 0.7 * place;
  }
  return gain;
}

}  // namespace

std::vector<Mode> membraneModes(const MembraneSettings& settings, Dice& dice, double width) {
  std::vector<Mode> modes;
  for (const Ring& ring : kRings) {
    const double ratio = power(ring.ratio, settings.spread) * (1.0 + kUneven * dice.shared.both() * (ring.ratio - 1.0));
    const double hertz = settings.hertz * ratio;
    const double soft = hertz / settings.hard;
    const double gain = strikeGain(ring, settings.place) / (1.0 + soft * soft) * (1.0 + 0.35 * dice.shared.both()) *
                        (1.0 + 0.5 * width * dice.own.both());
    modes.push_back(
        {.hertz = hertz, .gain = gain, .t60 = settings.t60 * power(ratio, -settings.damp), .attack = settings.contact});
  }
  if (settings.second > 0.0) {
    modes.push_back({.hertz = settings.hertz * settings.interval,
                     .gain = settings.second * modes.front().gain,
                     .t60 = settings.t60 * 0.8,
                     .attack = std::max(kCrossing, settings.contact)});
  }
  return modes;
}

}  // namespace sivray::content
