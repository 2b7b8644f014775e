// Sung vowels: a pulse train with some breath noise, through four formants that move from one vowel to another.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>

#include "content/models/Models.h"
#include "content/synth/Filters.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kVoiceBreathLayer = 10;
constexpr std::size_t kFormants = 4;
constexpr std::array<double, kFormants> kFormantGains{1.0, 1.1, 0.9, 0.6};
constexpr std::array<double, kFormants> kFormantQ{7.0, 9.0, 10.0, 10.0};

double formantOf(const std::vector<double>& list, std::size_t index) { return list[std::min(index, list.size() - 1)]; }

void addSinger(Signal& signal, const Parameters& p, Noise breath, double hertz, double start) {
  BandLimited pulses(start);
  GlideRatio glide({p["bend"], p.seconds("bendms"), 0.0, 0.004});
  Envelope level({p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0});
  std::array<Tuning, kFormants> tunings;
  std::array<SweepFilter, kFormants> throat;
  Biquad soft = Biquad::lowPass(p["soft"], 0.6);
  std::array<double, kFormants> from{};
  std::array<double, kFormants> octaves{};
  for (std::size_t i = 0; i < kFormants; ++i) {
    from[i] = formantOf(p.list("from"), i);
    octaves[i] = logarithmOfTwo(formantOf(p.list("to"), i) / from[i]);
  }
  const double seconds = p.seconds("ms");
  const double breathGain = p["breath"] * 0.3;
  const double vibrato = p["vib"] * 0.01 / 12.0;
  std::array<double, kFormants> tuned{};
  double place = 0.0;
  double time = 0.0;
  for (double& sample : signal) {
    if (level.isOver()) {
      return;
    }
    const double wobble = 1.0 + swing(vibrato, time * 5.4 + start);
    const double source = soft.next(pulses.saw(hertz * glide.next() * wobble)) + breathGain * breath.next();
    if (place < 1.0) {
      place = std::min(time / seconds, 1.0);
      for (std::size_t i = 0; i < kFormants; ++i) {
        tuned[i] = tunings[i].to(from[i] * powerOfTwo(octaves[i] * place));
      }
    }
    double sum = 0.0;
    for (std::size_t i = 0; i < kFormants; ++i) {
      sum += kFormantGains[i] * throat[i].next(source, tuned[i], kFormantQ[i]).band;
    }
    sample += level.next() * sum;
    time += 1.0 / kSampleRate;
  }
}

void makeVoice(Signal& signal, const Parameters& p, Dice dice) {
  std::uint64_t layer = kVoiceBreathLayer;
  const auto singers = static_cast<int>(p["singers"]);
  for (const double note : p.list("notes")) {
    for (int i = 0; i < singers; ++i) {
      const double ownDrift = dice.own.both();
      const double drift = p["detune"] * 0.01 * (dice.shared.both() + p["width"] * ownDrift);
      const double start = dice.shared.unit();
      addSinger(signal, p, Noise(dice, layer++, p["width"]), p["hz"] * ratioOfSemitones(note + drift), start);
    }
  }
}

}  // namespace

Model voiceModel() {
  return {"voice",
          {{"hz", {130.81}, 40, 1200},
           {"notes", {0, 12}, -36, 36},
           {"singers", {1}, 1, 6},
           {"detune", {12}, 0, 80},
           {"from", {700, 1150, 2500, 3400}, 100, 8000},
           {"to", {700, 1150, 2500, 3400}, 100, 8000},
           {"ms", {200}, 5, 5000},
           {"soft", {2500}, 200, 12000},
           {"breath", {0.2}, 0, 3},
           {"vib", {0}, 0, 100},
           {"bend", {0}, -0.7, 3},
           {"bendms", {40}, 1, 2000},
           {"attack", {10}, 0, 2000},
           {"hold", {80}, 0, 4000},
           {"t60", {300}, 5, 6000}},
          makeVoice};
}

}  // namespace sivray::content
