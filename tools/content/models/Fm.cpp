// Frequency modulation: a carrier under two modulators, singly or as a chord.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "content/models/Models.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kFmClickLayer = 1;

/// Highest carrier frequency in Hz: it keeps the sidebands of short, bright sounds below half the sample rate.
constexpr double kHighestPitch = 18000.0;

void addNote(Signal& signal, const Parameters& p, double hertz, double gain) {
  GlideRatio glide({p["bend"], p.seconds("bendms"), 0.0, 0.004});
  Envelope level({p.seconds("attack"), p.seconds("hold"), p.seconds("t60"), 0.0});
  Envelope first({0.0, 0.0, p.seconds("indexms"), 0.0});
  Envelope second({0.0, 0.0, p.seconds("index2ms"), 0.0});
  const double ratio = p["ratio"];
  const double ratio2 = p["ratio2"];
  const double index = p["index"] / 6.283185307179586;
  const double index2 = p["index2"] / 6.283185307179586;
  const double floor = p["floor"];
  const double feedback = p["feedback"] / 6.283185307179586;
  double phase = 0.0;
  double last = 0.0;
  for (double& sample : signal) {
    if (level.isOver()) {
      return;
    }
    const double amount = index * (floor + (1.0 - floor) * first.next());
    last = sineOfTurns(phase * ratio + feedback * last);
    const double bright = swing(index2 * second.next(), phase * ratio2);
    sample += gain * level.next() * sineOfTurns(phase + amount * last + bright);
    phase += std::min(hertz * glide.next(), kHighestPitch) / kSampleRate;
  }
}

void makeFm(Signal& signal, const Parameters& p, Dice dice) {
  const Noise click(dice, kFmClickLayer, p["width"]);
  const std::vector<double>& notes = p.list("notes");
  const double gain = 1.0 / static_cast<double>(notes.size());
  const double detune = p["detune"] * 0.01;
  for (const double note : notes) {
    const double drift = p["width"] * 0.06 * dice.own.both();
    const double hertz = p["hz"] * ratioOfSemitones(note + drift);
    addNote(signal, p, hertz, gain);
    if (detune > 0.0) {
      addNote(signal, p, hertz * ratioOfSemitones(detune), gain * 0.8);
    }
  }
  addClick(signal, click, {p["clickhz"], p.seconds("clickms"), p["click"], p["clicknoise"]});
}

}  // namespace

Model fmModel() {
  return {"fm",
          {{"hz", {130.81}, 20, 12000}, {"notes", {0, 12}, -48, 60}, {"ratio", {1}, 0.05, 30},
           {"index", {3}, 0, 40},       {"indexms", {300}, 1, 8000}, {"floor", {0.1}, 0, 1},
           {"feedback", {0}, 0, 4},     {"ratio2", {7}, 0.05, 40},   {"index2", {0}, 0, 20},
           {"index2ms", {60}, 1, 8000}, {"bend", {0}, -0.9, 30},     {"bendms", {20}, 0.5, 2000},
           {"attack", {0.3}, 0, 1000},  {"hold", {5}, 0, 4000},      {"t60", {800}, 3, 8000},
           {"detune", {0}, 0, 60},      {"click", {0}, 0, 3},        {"clickhz", {3000}, 200, 12000},
           {"clickms", {2}, 0.2, 30},   {"clicknoise", {0.3}, 0, 1}},
          makeFm};
}

}  // namespace sivray::content
