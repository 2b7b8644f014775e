// Many small collisions: seeds in a gourd, jingles in a frame, teeth under a stick, dust in a groove. The movement sets
// their rate, and all collisions excite the same few resonances.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kShakerGrainLayer = 1;
constexpr std::uint64_t kShakerHissLayer = 2;

/// Draws the seconds to the next collision: regular for teeth, random for seeds.
class Gaps {
 public:
  Gaps(const Parameters& p, const Random& random)
      : dice(random), rate(p["rate"]), rateEnd(p["rateend"]), seconds(p.seconds("ratems")), regular(p["regular"]) {}

  double next(double now) {
    const double place = std::min(now / seconds, 1.0);
    const double here = rate + place * ((rateEnd > 0.0 ? rateEnd : rate) - rate);
    return (regular + (1.0 - regular) * dice.between(0.0, 2.0)) / here;
  }

 private:
  Random dice;
  double rate, rateEnd, seconds, regular;
};

/// Renders the collisions as bursts of noise.
Signal collisions(std::size_t frames, const Parameters& p, const Dice& dice) {
  Signal signal(frames);
  const bool isWide = p["width"] > 0.0;
  Random random(isWide ? dice.own : dice.shared);
  Gaps gaps(p, random);
  random.next();
  Noise grain(dice, kShakerGrainLayer, p["width"]);
  Envelope movement({p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0});
  const double fall = decayPerFrame(p.seconds("grainms"));
  const double loudest = p["uneven"];
  double level = 0.0;
  double wait = 0.0;
  for (std::size_t i = 0; i < frames; ++i) {
    const double energy = movement.next();
    wait -= 1.0 / kSampleRate;
    if (wait <= 0.0) {
      const double blow = random.unit();
      level += energy * (1.0 - loudest + loudest * blow * blow * blow * 3.0);
      wait += gaps.next(static_cast<double>(i) / kSampleRate);
    }
    signal[i] = level * grain.next();
    level = level < 1e-9 ? 0.0 : level * fall;
  }
  return signal;
}

void makeShaker(Signal& signal, const Parameters& p, Dice dice) {
  const Signal source = collisions(signal.size(), p, dice);
  const double ring = p.seconds("ring");
  double gain = 1.0;
  for (const double hertz : p.list("hz")) {
    const double detune = 1.0 + 0.01 * p["width"] * dice.own.both();
    Signal body = source;
    Biquad::resonator(hertz * detune, ring).run(body);
    mixInto(signal, body, gain * p["body"] * 0.3);
    gain *= p["slope"];
  }
  Signal direct = source;
  Biquad::runInTurn(direct, Biquad::highPass(p["low"]), Biquad::lowPass(p["high"]));
  mixInto(signal, direct, p["direct"]);
  addNoise(signal, Noise(dice, kShakerHissLayer, p["width"]),
           {p["low"], p["high"], 1, p["hiss"] * 0.25, {p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0}});
}

}  // namespace

Model shakerModel() {
  return {"shaker",
          {{"rate", {900}, 1, 20000},
           {"rateend", {0}, 0, 20000},
           {"ratems", {500}, 1, 6000},
           {"regular", {0}, 0, 1},
           {"uneven", {0.7}, 0, 1},
           {"attack", {15}, 0, 2000},
           {"hold", {5}, 0, 6000},
           {"t60", {120}, 5, 6000},
           {"grainms", {4}, 0.1, 200},
           {"hz", {3200, 5400}, 100, 18000},
           {"ring", {6}, 0.2, 3000},
           {"body", {0.5}, 0, 4},
           {"slope", {0.9}, 0.1, 2},
           {"direct", {0.6}, 0, 4},
           {"low", {4000}, 20, 15000},
           {"high", {16000}, 200, 20000},
           {"hiss", {0.2}, 0, 4}},
          makeShaker};
}

}  // namespace sivray::content
