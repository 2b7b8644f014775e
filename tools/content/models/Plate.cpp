// A struck bronze plate: hats, cymbals, gongs. Hundreds of modes, of which the high ones start late and decay first,
// one dominant deep mode, noise where the modes are too dense to be separate, and the click of the stick.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>

#include "content/models/Models.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kPlateWashLayer = 1;
constexpr std::uint64_t kPlateTipLayer = 2;
constexpr std::uint64_t kPlateTopLayer = 3;

/// The frequency in Hz around which `tilt` raises or lowers the modes.
constexpr double kTiltCentre = 3000.0;

/// A bell's partials relative to its lowest.
constexpr std::array<double, 6> kBellRatios{1.0, 1.58, 2.24, 2.92, 3.66, 4.57};

/// Increases the differences between the modes' levels at the same total power. A mode's level depends on how close its
/// nodes are to the stick and to the microphone, so that a few modes are much louder than the others.
void makeUneven(std::vector<Mode>& modes, double amount) {
  double before = 0.0;
  double after = 0.0;
  for (Mode& mode : modes) {
    before += mode.gain * mode.gain;
    mode.gain *= power(std::max(std::abs(mode.gain), 1e-9), amount);
    after += mode.gain * mode.gain;
  }
  for (Mode& mode : modes) {
    mode.gain *= std::sqrt(before / after);
  }
}

std::vector<Mode> plateModes(const Parameters& p, Dice& dice) {
  std::vector<Mode> modes;
  const double count = p["modes"];
  const double scale = 1.0 / power(count, 0.5);
  for (int i = 0; i < static_cast<int>(count); ++i) {
    const double place = (static_cast<double>(i) + dice.shared.unit()) / count;
    const double hertz = p["low"] + (p["high"] - p["low"]) * power(std::max(place, 1e-6), p["density"]);
    const double tilt = factorOfDecibels(p["tilt"] * logarithmOfTwo(hertz / kTiltCentre));
    const double sharedGain = dice.shared.normal();
    const double ownGain = dice.own.normal();
    const double width = p["width"];
    const double gain = scale * tilt * ((1.0 - 0.5 * width) * sharedGain + 0.7 * width * ownGain);
    const double sharedPhase = dice.shared.unit();
    const Mode mode{.hertz = hertz * (1.0 + 0.0006 * width * dice.own.both()),
                    .gain = gain,
                    .t60 = p.seconds("t60") * dice.shared.between(0.6, 1.2) / (1.0 + hertz / p["damphz"]),
                    .phase = sharedPhase,
                    .attack = p.seconds("rise") * std::min(hertz / 5000.0, 2.0) + 0.0003};
    modes.push_back(mode);
    if (p["split"] > 0.0) {  // A plate that is not exactly round has each mode twice, slightly detuned; the two beat.
      Mode twin = mode;
      twin.hertz += p["split"] * dice.shared.between(0.3, 1.7);
      twin.phase = dice.shared.unit();
      twin.gain *= dice.shared.between(0.5, 1.0);
      modes.push_back(twin);
    }
  }
  if (p["uneven"] > 0.0) {
    makeUneven(modes, p["uneven"]);
  }
  if (p["lead"] > 0.0) {
    modes.push_back({.hertz = p["leadhz"], .gain = p["lead"] * 0.2, .t60 = p.seconds("leadms"), .attack = 0.0003});
  }
  for (const double ratio : kBellRatios) {
    const double hertz = p["bellhz"] * ratio;
    modes.push_back({.hertz = hertz,
                     .gain = p["bell"] * 0.5 / ratio * dice.shared.between(0.7, 1.0),
                     .t60 = p.seconds("bellms") / (1.0 + hertz / p["damphz"])});
  }
  return modes;
}

void makePlate(Signal& signal, const Parameters& p, Dice dice) {
  const double width = p["width"];
  const Noise wash(dice, kPlateWashLayer, width);
  const Noise tip(dice, kPlateTipLayer, width * 0.5);
  const Noise top(dice, kPlateTopLayer, width);
  addModes(signal, plateModes(p, dice));
  const Shape slow{p.seconds("rise") + 0.0004, p.seconds("hold"), p.seconds("washms"), 0.0};
  const Shape fast{p.seconds("rise") * 0.5 + 0.0004, 0.0, p.seconds("washms") * 0.45, 0.0};
  addNoise(signal, wash, {p["washlow"], p["washhigh"], 2, p["wash"] * 0.22, slow});
  addNoise(signal, top, {p["washhigh"] * 0.6, 18000, 2, p["wash"] * p["top"] * 0.2, fast});
  addNoise(signal, tip, {p["tiplow"], 15000, 1, p["tip"] * 0.2, {0.0003, 0.0005, p.seconds("tipms"), 0.0}});
}

}  // namespace

Model plateModel() {
  return {"plate",
          {{"low", {400}, 40, 6000},
           {"high", {15000}, 1000, 19000},
           {"modes", {160}, 8, 1600},
           {"split", {0}, 0, 60},
           {"density", {1.5}, 0.5, 4},
           {"uneven", {0}, 0, 3},
           {"lead", {0}, 0, 5},
           {"leadhz", {400}, 60, 4000},
           {"leadms", {1500}, 10, 15000},
           {"tilt", {0}, -18, 18},
           {"t60", {1500}, 10, 15000},
           {"damphz", {4000}, 200, 40000},
           {"rise", {2}, 0, 3000},
           {"hold", {0}, 0, 2000},
           {"bell", {0}, 0, 3},
           {"bellhz", {800}, 100, 4000},
           {"bellms", {2000}, 10, 15000},
           {"wash", {1}, 0, 5},
           {"washlow", {3500}, 100, 14000},
           {"washhigh", {11000}, 500, 19000},
           {"washms", {700}, 5, 8000},
           {"top", {0.5}, 0, 4},
           {"tip", {0.5}, 0, 15},
           {"tiplow", {3500}, 200, 12000},
           {"tipms", {12}, 1, 300}},
          makePlate};
}

}  // namespace sivray::content
