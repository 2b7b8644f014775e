// Stabs: a chord of detuned oscillators through a low-pass that opens and closes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kStabNoiseLayer = 1;

/// One oscillator. `wave` 0 is a saw, 1 a square, 2 a sine; values in between crossfade.
class Oscillator {
 public:
  Oscillator(double frequency, double startPhase, double shape)
      : hertz(frequency), wave(shape), saw(startPhase), square(startPhase), phase(startPhase) {}

  double next(double ratio) {
    const double now = hertz * ratio;
    const double first = wave < 1.0 ? saw.saw(now) : square.square(now);
    if (wave == 0.0 || wave == 1.0) {
      return first;
    }
    const double second = wave < 1.0 ? square.square(now) : sine(now);
    const double share = wave < 1.0 ? wave : wave - 1.0;
    return first + share * (second - first);
  }

 private:
  double sine(double now) {
    const double out = sineOfTurns(phase);
    phase += now / kSampleRate;
    phase -= wholeBelow(phase);
    return out;
  }

  double hertz, wave;
  BandLimited saw, square;
  double phase;
};

std::vector<Oscillator> oscillators(const Parameters& p, Dice& dice) {
  std::vector<Oscillator> all;
  const double width = p["width"];
  const auto voices = static_cast<int>(p["voices"]);
  for (const double note : p.list("notes")) {
    for (int voice = 0; voice < voices; ++voice) {
      const double place = voices == 1 ? 0.0 : 2.0 * static_cast<double>(voice) / (voices - 1) - 1.0;
      const double ownDrift = width * dice.own.both();
      const double drift = place + 0.3 * dice.shared.both() + 0.8 * ownDrift;
      const double cents = p["detune"] * drift;
      const double start = voices == 1 && width == 0.0 ? 0.0 : dice.shared.unit() + width * dice.own.unit();
      all.emplace_back(p["hz"] * ratioOfSemitones(note + cents * 0.01), start - std::floor(start), p["wave"]);
    }
  }
  return all;
}

void makeStab(Signal& signal, const Parameters& p, Dice dice) {
  std::vector<Oscillator> all = oscillators(p, dice);
  const double scale = 1.0 / std::sqrt(static_cast<double>(all.size()));
  GlideRatio glide({p["bend"], p.seconds("bendms"), 0.0, 0.004});
  Envelope level({p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0});
  Envelope opening({p.seconds("openms"), p.seconds("filterhold"), p.seconds("filterms"), 0.0});
  Noise noise(dice, kStabNoiseLayer, p["width"]);
  Envelope puff({0.0005, 0.0, p.seconds("noisems"), 0.0});
  Tuning tuning;
  SweepFilter first;
  SweepFilter second;
  const double noiseGain = p["noise"] * 0.3;
  const double octaves = logarithmOfTwo(p["peak"] / p["base"]);
  const double base = p["base"];
  const double q = p["q"];
  for (double& sample : signal) {
    if (level.isOver()) {
      return;
    }
    const double ratio = glide.next();
    double sum = 0.0;
    for (Oscillator& oscillator : all) {
      sum += oscillator.next(ratio);
    }
    sum *= scale;
    if (noiseGain > 0.0 && !puff.isOver()) {
      sum += noiseGain * puff.next() * noise.next();
    }
    const double g = tuning.to(base * powerOfTwo(octaves * opening.next()));
    const double low = first.next(sum, g, q).low;
    sample += level.next() * second.next(low, g, 0.6).low;
  }
}

}  // namespace

Model stabModel() {
  return {"stab",
          {{"hz", {130.81}, 20, 4000},
           {"notes", {0, 12}, -48, 60},
           {"voices", {2}, 1, 9},
           {"detune", {8}, 0, 80},
           {"wave", {0}, 0, 2},
           {"bend", {0}, -0.9, 8},
           {"bendms", {30}, 1, 2000},
           {"base", {300}, 30, 18000},
           {"peak", {6000}, 40, 20000},
           {"openms", {1}, 0, 2000},
           {"filterhold", {10}, 0, 4000},
           {"filterms", {400}, 5, 8000},
           {"q", {1}, 0.5, 20},
           {"noise", {0}, 0, 4},
           {"noisems", {60}, 2, 2000},
           {"attack", {1}, 0, 2000},
           {"hold", {80}, 0, 4000},
           {"t60", {400}, 5, 8000}},
          makeStab};
}

}  // namespace sivray::content
