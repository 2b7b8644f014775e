// The components that drums are built from. Each function adds to one channel. Times are in seconds, frequencies in Hz,
// gains are factors, and `t60` is the time to fall by 60 dB.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <span>
#include <vector>

#include "content/synth/Math.h"
#include "content/synth/Random.h"
#include "content/synth/Signal.h"

namespace sivray::content {

/// An envelope: a linear rise, a hold at full level, and an exponential fall.
struct Shape {
  double attack = 0.0;
  double hold = 0.0;
  double t60 = 0.5;
  double delay = 0.0;
};

/// Computes a shape frame by frame.
class Envelope {
 public:
  explicit Envelope(const Shape& shape);
  double next();

  /// Whether the envelope has ended: all following values are 0.
  bool isOver() const { return level == 0.0; }

  /// Returns the frames until an envelope is over, at most `limit`.
  static std::size_t framesOf(const Shape& shape, std::size_t limit);

 private:
  std::size_t delayFrames, attackFrames, holdFrames;
  std::size_t frame = 0;
  double factor;
  double level = 1.0;
};

/// A pitch that starts high and falls. `bend` and `snap` are the excess at the start, as multiples of the frequency;
/// each decays exponentially with its time constant, `snap` faster.
struct Glide {
  double bend = 0.0;
  double bendTime = 0.03;
  double snap = 0.0;
  double snapTime = 0.004;
};

/// Computes a glide's frequency factor frame by frame.
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

/// One decaying partial of a body.
struct Mode {
  double hertz = 100.0;
  double gain = 1.0;
  double t60 = 0.5;
  double phase = 0.0;   ///< In turns.
  double attack = 0.0;  ///< A linear rise, for modes that other modes excite.
};

/// Adds modes with constant frequencies.
void addModes(Signal& signal, std::span<const Mode> modes);

/// Adds modes whose frequencies all follow one glide, as a struck skin's do.
void addModes(Signal& signal, std::span<const Mode> modes, const Glide& glide);

/// A band of noise. Its level is independent of its width.
struct NoiseBand {
  double low = 20.0;
  double high = 20000.0;
  int poles = 2;  ///< Second-order sections at each edge, 1 or 2.
  double gain = 1.0;
  Shape shape{};
};
void addNoise(Signal& signal, Noise noise, const NoiseBand& band);

/// The stroke: one rounded cycle of a sine, with noise around it.
struct Click {
  double hertz = 3000.0;
  double seconds = 0.002;
  double gain = 0.5;
  double noise = 0.3;  ///< Share of noise, 0 to 1.
};
void addClick(Signal& signal, Noise noise, const Click& click);

/// A band-limited square or saw.
class BandLimited {
 public:
  explicit BandLimited(double startPhase) : phase(startPhase) {}

  double square(double hertz) {
    const double step = stepOf(hertz);
    const double opposite = phase < 0.5 ? phase + 0.5 : phase - 0.5;
    const double out = (phase < 0.5 ? 1.0 : -1.0) + correction(phase, step) - correction(opposite, step);
    advance(step);
    return out;
  }

  double saw(double hertz) {
    const double step = stepOf(hertz);
    const double out = 2.0 * phase - 1.0 - correction(phase, step);
    advance(step);
    return out;
  }

 private:
  static double stepOf(double hertz) { return std::min(hertz / kSampleRate, 0.49); }

  static double correction(double phase, double step) {
    if (phase < step) {
      const double t = phase / step;
      return t + t - t * t - 1.0;
    }
    if (phase > 1.0 - step) {
      const double t = (phase - 1.0) / step;
      return t * t + t + t + 1.0;
    }
    return 0.0;
  }

  void advance(double step) {
    phase += step;
    phase -= wholeBelow(phase);
  }

  double phase;
};

/// Adds `from` times `gain` to `to`, up to the shorter length.
void mixInto(Signal& to, const Signal& from, double gain);

/// Returns the RMS; 0 for an empty signal.
double rmsOf(const Signal& signal);

/// Returns the largest absolute sample of all channels.
double peakOf(const Sound& sound);

/// Scales so that the largest absolute sample is `peak`. Silence is left unchanged.
void normalise(Signal& signal, double peak);

}  // namespace sivray::content
