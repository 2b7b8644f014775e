// The parts that drums are put together from. Each one adds to one channel; times are in seconds, frequencies in Hz,
// gains are factors, and a `t60` is the time in which a level falls by 60 dB.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

#include "content/synth/Random.h"
#include "content/synth/Signal.h"

namespace sivray::content {

/// A rise, a time at full level, and an exponential fall.
struct Shape {
  double attack = 0.0;
  double hold = 0.0;
  double t60 = 0.5;
  double delay = 0.0;
};

/// Gives a shape frame by frame.
class Envelope {
 public:
  explicit Envelope(const Shape& shape);
  double next();

  /// Whether nothing but zeros will follow.
  bool isOver() const { return level == 0.0; }

 private:
  std::size_t delayFrames, attackFrames, holdFrames;
  std::size_t frame = 0;
  double factor;
  double level = 1.0;
};

/// A pitch that begins too high and falls: by `bend` times the frequency with time constant `bendTime`, and by `snap`
/// the same way, which is the short one.
struct Glide {
  double bend = 0.0;
  double bendTime = 0.03;
  double snap = 0.0;
  double snapTime = 0.004;
};

/// Gives the factor of a glide frame by frame.
class GlideRatio {
 public:
  explicit GlideRatio(const Glide& glide);
  double next();

 private:
  double bend, bendFactor, snap, snapFactor;
};

/// A sine with a glide. `fold` bends it towards a square, 0 to 1.
struct Tone {
  double hertz = 100.0;
  double gain = 1.0;
  double phase = 0.0;  ///< In turns.
  double fold = 0.0;
  Glide glide{};
  Shape shape{};
};
void addTone(Signal& signal, const Tone& tone);

/// One way in which a body rings.
struct Mode {
  double hertz = 100.0;
  double gain = 1.0;
  double t60 = 0.5;
  double phase = 0.0;   ///< In turns.
  double attack = 0.0;  ///< A linear rise, for what is set ringing by its neighbours.
};

/// Adds modes of steady pitch.
void addModes(Signal& signal, std::span<const Mode> modes);

/// Adds modes that all follow one glide, as those of a struck skin do.
void addModes(Signal& signal, std::span<const Mode> modes, const Glide& glide);

/// A band of noise. Its level does not depend on how wide the band is.
struct NoiseBand {
  double low = 20.0;
  double high = 20000.0;
  int poles = 2;  ///< Second-order sections at each edge, 1 to 4.
  double gain = 1.0;
  Shape shape{};
};
void addNoise(Signal& signal, Noise noise, const NoiseBand& band);

/// The blow itself: a burst of one rounded swing of a sine, with noise around it.
struct Click {
  double hertz = 3000.0;
  double seconds = 0.002;
  double gain = 0.5;
  double noise = 0.3;  ///< Share of noise, 0 to 1.
};
void addClick(Signal& signal, Noise noise, const Click& click);

/// A square or saw without steps between samples.
class BandLimited {
 public:
  explicit BandLimited(double startPhase) : phase(startPhase) {}
  double square(double hertz);
  double saw(double hertz);

 private:
  static double correction(double phase, double step);
  void advance(double step);

  double phase;
};

/// Adds `from` times `gain` to `to`, as far as both reach.
void mixInto(Signal& to, const Signal& from, double gain);

/// Root of the mean square; 0 for nothing.
double rmsOf(const Signal& signal);

/// The highest sample of all channels, regardless of its sign.
double peakOf(const Sound& sound);

/// Scales so that the highest sample stands at `peak`; silence stays.
void normalise(Signal& signal, double peak);

}  // namespace sivray::content
