// Pitch sweeps: zaps, lasers, sirens, game sounds, the squeak of a rubbed skin.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kZapNoiseLayer = 1;
constexpr double kHighestZap = 16000.0;

/// The pitch over time: from one end to the other on a logarithmic scale, in steps and with a vibrato.
class Pitch {
 public:
  explicit Pitch(const Parameters& p)
      : steps(p.list("steps")),
        from(p["from"]),
        octaves(logarithmOfTwo(p["to"] / p["from"])),
        seconds(p.seconds("ms")),
        curve(p["curve"]),
        stepSeconds(p.seconds("stepms")),
        vibrato(p["vibhz"]),
        depth(p["vib"]) {}

  double at(double now) const {
    const double place = std::min(now / seconds, 1.0);
    const double bent = place * (1.0 + curve * (1.0 - place));
    const auto step = std::min(static_cast<std::size_t>(now / stepSeconds), steps.size() - 1);
    const double semitones = steps[step] + swing(depth, now * vibrato);
    return std::min(from * powerOfTwo(octaves * bent + semitones / 12.0), kHighestZap);
  }

 private:
  std::vector<double> steps;
  double from, octaves, seconds, curve, stepSeconds, vibrato, depth;
};

void makeZap(Signal& signal, const Parameters& p, Dice dice) {
  const Pitch pitch(p);
  Envelope level({p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0});
  Noise noise(dice, kZapNoiseLayer, p["width"]);
  const double noiseGain = p["noise"];
  const double wave = p["wave"];
  const double drift = 1.0 + 0.0015 * p["width"] * dice.own.both();
  const double ringHertz = p["ringhz"] * (1.0 + 0.02 * p["width"] * dice.own.both());
  const double ring = p["ring"];
  const double follow = p["follow"];
  const double q = p["q"];
  double phase = 0.0;
  BandLimited square(0.0);
  Tuning tuning;
  SweepFilter filter;
  double time = 0.0;
  for (double& sample : signal) {
    if (level.isOver()) {
      return;
    }
    const double hertz = pitch.at(time) * drift;
    const double sine = sineOfTurns(phase);
    phase += hertz / kSampleRate;
    phase -= wholeBelow(phase);
    double x = wave == 0.0 ? sine : sine + wave * (square.square(hertz) * 0.8 - sine);
    x += noiseGain == 0.0 ? 0.0 : noiseGain * noise.next() * 0.5;
    x *= 1.0 - ring + swing(ring, time * ringHertz);
    sample += level.next() * filter.next(x, tuning.to(hertz * follow), q).low;
    time += 1.0 / kSampleRate;
  }
}

}  // namespace

Model zapModel() {
  return {"zap",
          {{"from", {4000}, 20, 16000},
           {"to", {100}, 20, 16000},
           {"ms", {200}, 1, 6000},
           {"curve", {0.6}, -1, 1},
           {"steps", {0, 0}, -48, 48},
           {"stepms", {60}, 1, 3000},
           {"vibhz", {6}, 0, 200},
           {"vib", {0}, 0, 24},
           {"wave", {0}, 0, 1},
           {"noise", {0}, 0, 2},
           {"ring", {0}, 0, 1},
           {"ringhz", {90}, 0, 4000},
           {"follow", {4}, 0.5, 40},
           {"q", {0.8}, 0.5, 20},
           {"attack", {0.5}, 0, 3000},
           {"hold", {60}, 0, 5000},
           {"t60", {200}, 5, 6000}},
          makeZap};
}

}  // namespace sivray::content
