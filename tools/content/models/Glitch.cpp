// Broken machines: a random sequence of short pieces of tone, noise and silence, through a sample-rate reducer.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "content/models/Models.h"
#include "content/synth/Math.h"
#include "content/synth/Parts.h"

namespace sivray::content {
namespace {

constexpr std::uint64_t kGlitchNoiseLayer = 1;

/// One piece of the sequence. Its random numbers are drawn when it starts.
struct Piece {
  std::size_t frames = 0;
  double hertz = 0.0;
  double slide = 0.0;
  double tone = 0.0;
  double noise = 0.0;
  double level = 0.0;
  double clock = 1.0;
};

Piece throwPiece(const Parameters& p, Random& dice, double octaves) {
  Piece piece;
  piece.frames = framesOf(dice.between(p.seconds("shortest"), p.seconds("longest"))) + 1;
  piece.hertz = p["low"] * powerOfTwo(octaves * dice.unit());
  piece.slide = p["slide"] * dice.both();
  const double kind = dice.unit();
  const bool isNoise = kind < p["noise"];
  piece.noise = isNoise ? 1.0 : 0.0;
  piece.tone = isNoise ? 0.0 : 1.0;
  piece.level = dice.unit() < p["gaps"] ? 0.0 : dice.between(0.4, 1.0);
  piece.clock = dice.between(1.0, p["coarse"]);
  return piece;
}

void makeGlitch(Signal& signal, const Parameters& p, Dice dice) {
  Random& random = p["width"] > 0.5 ? dice.own : dice.shared;
  const double octaves = logarithmOfTwo(p["high"] / p["low"]);
  Noise noise(dice, kGlitchNoiseLayer, p["width"]);
  Envelope level({0.0, p.seconds("hold"), p.seconds("t60"), 0.0});
  const double square = p["square"];
  Piece piece;
  std::size_t left = 0;
  double phase = 0.0;
  double clock = 0.0;
  double held = 0.0;
  for (double& sample : signal) {
    if (level.isOver()) {
      return;
    }
    if (left == 0) {
      piece = throwPiece(p, random, octaves);
      left = piece.frames;
      phase = 0.0;
    }
    --left;
    const double place = 1.0 - static_cast<double>(left) / static_cast<double>(piece.frames);
    phase += piece.hertz * powerOfTwo(piece.slide * place) / kSampleRate;
    const double sine = sineOfTurns(phase);
    clock += 1.0;
    if (clock >= piece.clock) {
      clock -= piece.clock;
      const double tone = sine + square * (std::copysign(0.7, sine) - sine);
      held = piece.level * (piece.tone * tone + piece.noise * 0.5 * noise.next());
    }
    sample += level.next() * held;
  }
}

}  // namespace

Model glitchModel() {
  return {"glitch",
          {{"shortest", {4}, 0.5, 500},
           {"longest", {40}, 1, 1000},
           {"low", {200}, 20, 10000},
           {"high", {6000}, 40, 16000},
           {"slide", {0.5}, 0, 4},
           {"square", {0.7}, 0, 1},
           {"noise", {0.3}, 0, 1},
           {"gaps", {0.2}, 0, 0.95},
           {"coarse", {6}, 1, 60},
           {"hold", {200}, 0, 6000},
           {"t60", {400}, 5, 6000}},
          makeGlitch};
}

}  // namespace sivray::content
